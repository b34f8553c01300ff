// Options, subcommands and help texts.
#include "zeq/cli.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "text/text.h"
#include "zeq/failure.h"

namespace zeq::host {

namespace {

constexpr const char* exitCodes =
    "Exit codes:\n"
    "  0         done\n"
    "  1         a negative verdict (invalid; with --strict, not whole)\n"
    "  2         wrong usage\n"
    "  3         a file cannot be read or written, or the translator not started\n"
    "  4         the translator reported a failure\n"
    "  5         the translator crashed or broke the protocol\n"
    "  6         the time-out has passed\n"
    "  128 + n   ended by signal n: 130 for Ctrl-C, 143 for SIGTERM";

constexpr std::array<const char*, 6> levelNames{"fatal", "error", "warning", "info", "debug", "trace"};

/// "LEVEL:FILE", the level by number or name.
LogTarget parseLogTarget(const std::string& text) {
    const std::size_t colon = text.find(':');
    const std::string level = text.substr(0, colon);
    LogTarget target;
    for (std::size_t i = 0; i < levelNames.size(); ++i) {
        const auto number = static_cast<int>(i + 1);
        if (level == levelNames[i] || level == std::to_string(number)) target.level = number;
    }
    if (colon != std::string::npos) target.path = text.substr(colon + 1);
    if (target.level == 0 || target.path.empty())
        throw CLI::ValidationError(
            "--log", "'" + text + "' is not LEVEL:FILE with a level from 1 (fatal) to 6 (trace)");
    return target;
}

EConvexorInterface parseInterface(const std::string& text) {
    std::string names;
    for (const EnumEntry& entry : enumTable(EConvexorInterface{}).entries()) {
        const std::string name = text::printable(entry.name);
        if (name == text) return static_cast<EConvexorInterface>(entry.value);
        names += (names.empty() ? "" : ", ") + name;
    }
    throw CLI::ValidationError("--interface", "'" + text::printable(text) + "' is none of " + names);
}

EColor parseColor(const std::string& text) {
    constexpr std::array<const char*, 3> names{"auto", "always", "never"}; // in the order of the enumeration
    const auto* const name = std::ranges::find(names, text);
    if (name != names.end()) return static_cast<EColor>(name - names.begin());
    throw CLI::ValidationError("--color", "'" + text::printable(text) + "' is none of auto, always, never");
}

/// The whole of the text as a number.
template <class Number>
bool readNumber(std::string_view text, Number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

/// "1600x1200".
void readSize(const std::string& text, depiction::Wishes& picture) {
    const std::size_t x = text.find('x');
    const std::string_view whole = text;
    const auto isSide = [](int pixels) { return pixels >= 1 && pixels <= 16384; };
    if (x == std::string::npos || !readNumber(whole.substr(0, x), picture.width) ||
        !readNumber(whole.substr(x + 1), picture.height) || !isSide(picture.width) || !isSide(picture.height))
        throw CLI::ValidationError("--size", "'" + text::printable(text) +
                                                 "' is no size such as 1600x1200, up to 16384x16384");
}

/// "x", "y" or "z", or one of them with a place: "z=12.5".
depiction::SectionWish parseSection(const std::string& text) {
    depiction::SectionWish section;
    double at = 0;
    const bool hasAxis = !text.empty() && text[0] >= 'x' && text[0] <= 'z';
    const bool hasPlace =
        text.size() > 2 && text[1] == '=' && readNumber(std::string_view(text).substr(2), at);
    if (!hasAxis || !(text.size() == 1 || (hasPlace && std::isfinite(at))))
        throw CLI::ValidationError("--section",
                                   "'" + text::printable(text) + "' is none of x, y, z and x=12.5");
    section.axis = text[0] - 'x';
    if (hasPlace) section.at = at;
    return section;
}

/// The commands, with all words of their names, that have this option.
void collectOwners(const CLI::App& app, const std::string& option, const std::string& name,
                   std::vector<std::string>& owners) {
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        const std::string full = name + (name.empty() ? "" : " ") + command->get_name();
        if (command->get_option_no_throw(option)) owners.push_back(full);
        collectOwners(*command, option, full, owners);
    }
}

/// "a, b and c".
std::string listed(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "" : i + 1 == words.size() ? " and " : ", ") + words[i];
    return text;
}

class CommandLine {
public:
    CommandLine();
    Settings parse(int argc, char** argv);

private:
    CLI::App* addCommand(const std::string& name, const std::string& description, EAction action);
    void addImportCommand(const std::string& name, const std::string& description, EAction action);
    CLI::App* addShowingCommand(const std::string& name, const std::string& description, EAction action);
    void addPictureCommand();
    void addPrintingCommand();
    void setCommandType(CLI::App* command, Command::EType type);
    void addOptionsOfFile(CLI::App* command, const std::string& description = "The CAD file");
    [[noreturn]] void refuse(const CLI::ParseError& error) const;

    CLI::App m_app{"zeq hands CAD files to a translator process and shows what it sends back.", "zeq"};
    Settings m_settings;
    double m_timeout = 0;
    bool m_version = false;
};

CommandLine::CommandLine() {
    m_app.require_subcommand(0, 1);
    m_app.footer(exitCodes);
    m_app.get_formatter()->column_width(28);
    m_app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);

    setCommandType(addCommand("ping", "Ask whether the translator answers", EAction::ping),
                   Command::EType::ping);
    setCommandType(
        addCommand("info", "Show what the translator is and which formats it reads", EAction::info),
        Command::EType::info);
    addImportCommand("import", "Import a CAD file and show what is in it", EAction::import);
    addImportCommand("tree", "Import a CAD file and show its assembly tree", EAction::tree);

    addShowingCommand("gltf", "Write what is to be seen of a model as binary glTF", EAction::gltf)
        ->add_flag("--compress", m_settings.compress,
                   "Compress with EXT_meshopt_compression, which not everything reads");
    addPictureCommand();
    addShowingCommand("view", "Write a page that shows a model in a browser", EAction::view);
    addPrintingCommand();
    addCommand("run", "Send a stored command document to the translator", EAction::run)
        ->add_option("FILE", m_settings.file, "What zeq command prints; - is standard input")
        ->required()
        ->type_name("");
    CLI::App* check =
        addCommand("check", "Say what is wrong in documents that somebody wrote", EAction::check);
    check
        ->add_option("FILE", m_settings.files,
                     "Documents, bare objects or reports of --json; - is standard input")
        ->required()
        ->type_name("")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    check->add_option("--class", m_settings.className, "The class of a bare object, such as ExcBlock")
        ->type_name("NAME");
    CLI::App* inspect = addCommand(
        "inspect", "Show what is in an image of geometry, and what is wrong with it", EAction::inspect);
    inspect
        ->add_option("FILE", m_settings.file,
                     "A kept image, or the name of a shared buffer, which stays; - is standard input")
        ->required()
        ->type_name("");
    inspect->add_flag("--records", m_settings.records, "Show every record, and nothing else");
    inspect->add_flag("--all", m_settings.all, "Show all faces and edges, however many");
    addCommand("schema", "Print the JSON Schema of all documents or of one class", EAction::schema)
        ->add_option("CLASS", m_settings.className, "The class, such as Command")
        ->type_name("");

    m_app.add_flag("--json", m_settings.json, "Print one JSON document, with everything that arrived");
    m_app.add_option("-o,--output", m_settings.output, "Write the result to this file")->type_name("FILE");
    m_app.add_flag("--force", m_settings.force, "Let --output replace a file");
    m_app
        .add_option("--translator", m_settings.translator,
                    "Start this translator (default: convexor beside zeq)")
        ->type_name("PATH");
    m_app
        .add_option("--timeout", m_timeout,
                    "Give up after so many seconds (default: 30, for an import never)")
        ->type_name("SECONDS")
        ->check([](const std::string& text) {
            double seconds = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
            const bool whole = error == std::errc() && end == text.data() + text.size();
            return whole && seconds > 0 && seconds <= 1e9
                       ? ""
                       : "'" + text + "' is not a positive number of seconds";
        });
    m_app
        .add_option_function<std::string>(
            "--log", [this](const std::string& text) { m_settings.log = parseLogTarget(text); },
            "Log to a file; levels from 1, fatal, to 6, trace")
        ->type_name("LEVEL:FILE");
    m_app.add_flag("--strict", m_settings.strict,
                   "Exit with 1 after any warning: when something was lost or is faulty");
    m_app.add_flag("-q,--quiet", m_settings.quiet, "Tell nothing but errors on standard error");
    m_app.add_flag("-v,--verbose", m_settings.verbose, "Tell more on standard error");
    m_app.add_flag_callback(
        "--no-progress", [this] { m_settings.progress = false; }, "Draw no progress bar");
    m_app
        .add_option_function<std::string>(
            "--color", [this](const std::string& when) { m_settings.color = parseColor(when); },
            "Use colours: auto (default), always or never")
        ->type_name("WHEN");
    m_app.add_flag("--version", m_version, "Show the versions of zeq, its interface and the translator");
}

CLI::App* CommandLine::addCommand(const std::string& name, const std::string& description, EAction action) {
    CLI::App* command = m_app.add_subcommand(name, description);
    command->fallthrough();
    command->footer("The options of all commands and the exit codes: zeq --help");
    command->callback([this, action] { m_settings.action = action; });
    return command;
}

void CommandLine::setCommandType(CLI::App* command, Command::EType type) {
    command->parse_complete_callback([this, type] { m_settings.commandType = type; });
}

void CommandLine::addImportCommand(const std::string& name, const std::string& description, EAction action) {
    CLI::App* command = addCommand(name, description, action);
    setCommandType(command, Command::EType::import);
    addOptionsOfFile(command);
    command->add_flag("--all", m_settings.all, "Show everything, however long");
    command
        ->add_option("--geometry", m_settings.geometryDirectory,
                     "Write the geometry of each block to this directory, as block_ID.sab")
        ->type_name("DIR");
    if (action != EAction::import) return;
    command->add_option("--picture", m_settings.pictureFile, "Write a picture of it, as PNG, to this file")
        ->type_name("FILE");
}

void CommandLine::addOptionsOfFile(CLI::App* command, const std::string& description) {
    command->add_option("FILE", m_settings.file, description)->required()->type_name("");
    command
        ->add_option("--set", m_settings.assignments,
                     "Set a key of the options, or of one of their groups: modeler.length_unit_type=inch")
        ->type_name("[GROUP.]KEY=VALUE")
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command
        ->add_option("--format-options", m_settings.formatOptions,
                     "A JSON array of option groups; - is standard input")
        ->type_name("FILE");
    command->add_flag("--mt", m_settings.multiThreading, "Let the translator work in several threads");
}

CLI::App* CommandLine::addShowingCommand(const std::string& name, const std::string& description,
                                         EAction action) {
    CLI::App* command = addCommand(name, description, action);
    setCommandType(command, Command::EType::import);
    addOptionsOfFile(command, "The CAD file, or what zeq --json import wrote of one");
    return command;
}

void CommandLine::addPictureCommand() {
    CLI::App* command = addShowingCommand("picture", "Write a picture of a model, as PNG", EAction::picture);
    depiction::Wishes& picture = m_settings.picture;
    command
        ->add_option_function<std::string>(
            "--size", [&picture](const std::string& text) { readSize(text, picture); },
            "In pixels (default: 1600x1200)")
        ->type_name("WIDTHxHEIGHT");
    CLI::Option* const allViews =
        command
            ->add_option("--all-views", m_settings.viewsDirectory,
                         "Write a picture of every view to this directory, as NAME.png")
            ->type_name("DIR");
    command
        ->add_option("--view", picture.view,
                     "iso (default), front, back, left, right, top, bottom, or the name of a saved view")
        ->type_name("NAME")
        ->excludes(allViews);
    command
        ->add_option_function<std::string>(
            "--section", [&picture](const std::string& text) { picture.section = parseSection(text); },
            "Cut away what is before a plane: across x, y or z through the middle, or at a place")
        ->type_name("AXIS[=PLACE]");
    command->add_flag("--pmi,!--no-pmi", picture.hasAnnotations, "Draw annotations (default)");
    command->add_flag("--edges,!--no-edges", picture.hasEdges, "Draw edges (default)");
    command->add_flag("--transparent", picture.isTransparent, "Leave the background transparent");
}

void CommandLine::addPrintingCommand() {
    CLI::App* command =
        addCommand("command", "Print the command document that would be sent", EAction::command);
    command->require_subcommand(1);
    command
        ->add_option_function<std::string>(
            "--interface", [this](const std::string& name) { m_settings.interface = parseInterface(name); },
            "The generation of the protocol: connect (default), uconnect or legacy")
        ->type_name("NAME");
    const auto add = [&](const char* name, const char* description, Command::EType type) {
        CLI::App* kind = command->add_subcommand(name, description);
        kind->fallthrough();
        setCommandType(kind, type);
        return kind;
    };
    addOptionsOfFile(add("import", "The import of a file, which need not exist", Command::EType::import));
    addOptionsOfFile(add("export", "The export to a file", Command::EType::export_));
    add("info", "The question for the translator's description", Command::EType::info);
    add("ping", "The question whether the translator answers", Command::EType::ping);
}

Settings CommandLine::parse(int argc, char** argv) {
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        m_settings.action = EAction::showText;
        m_settings.text = m_app.help();
        m_settings.json = false; // help is for people
        return m_settings;
    } catch (const CLI::ParseError& error) {
        refuse(error);
    }
    if (m_version)
        m_settings.action = EAction::showVersion;
    else if (m_app.get_subcommands().empty())
        throw Failure(exit_code::usage, "a command is missing; zeq --help lists them");
    if (m_timeout > 0) m_settings.timeout = std::chrono::duration<double>(m_timeout);
    if (m_settings.output == "-") m_settings.output.clear();
    return m_settings;
}

void CommandLine::refuse(const CLI::ParseError& error) const {
    const std::vector<std::string> unknown = m_app.remaining(true);
    if (unknown.empty())
        throw Failure(exit_code::usage, std::string(error.what()) + "; zeq --help tells more");

    const std::string word = unknown.front().substr(0, unknown.front().find('='));
    if (word.starts_with('-')) {
        std::vector<std::string> owners;
        collectOwners(m_app, word, {}, owners);
        if (!owners.empty())
            throw Failure(exit_code::usage, "the option '" + word + "' belongs to zeq " + listed(owners) +
                                                ", after whose name it stands");
    }
    std::vector<std::string> names;
    std::vector<const CLI::App*> apps{&m_app};
    while (!apps.back()->get_subcommands().empty()) apps.push_back(apps.back()->get_subcommands().front());
    const auto commands = apps.back()->get_subcommands([](const CLI::App*) { return true; });
    if (word.starts_with('-')) {
        for (const CLI::App* app : apps)
            for (const CLI::Option* option : app->get_options())
                for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    } else {
        for (const CLI::App* command : commands) names.push_back(command->get_name());
    }
    const char* kind = word.starts_with('-') ? "option" : commands.empty() ? "argument" : "command";
    const std::string near = text::nearest(word, names);
    throw Failure(exit_code::usage,
                  "unknown " + std::string(kind) + " '" + text::printable(word) + "'" +
                      (near.empty() ? "; zeq --help lists what there is" : "; did you mean '" + near + "'?"));
}

} // namespace

Settings parseCommandLine(int argc, char** argv) { return CommandLine().parse(argc, argv); }

} // namespace zeq::host
