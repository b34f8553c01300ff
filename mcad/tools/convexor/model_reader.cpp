// The kernel's STEP and IGES readers behind one function.
#include "convexor/model_reader.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

#include <IGESCAFControl_Reader.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_CheckTool.hxx>
#include <Interface_HGraph.hxx>
#include <Interface_InterfaceModel.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Message_ProgressIndicator.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <StepBasic_ConversionBasedUnitAndMassUnit.hxx>
#include <StepBasic_SiUnitAndMassUnit.hxx>
#include <StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx.hxx>
#include <StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include "convexor/file_numbers.h"
#include "convexor/model_contents.h"
#include "convexor/model_repair.h"
#include "convexor/text.h"
#include "transport/utf8.h"

namespace zeq::convexor {

namespace {

/// A kernel message without the blanks, asterisks and line ends around it.
std::string_view trimmed(std::string_view text) {
    constexpr std::string_view decoration = " *\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(decoration), text.size()));
    return text.substr(0, text.find_last_not_of(decoration) + 1);
}

/// Passes the kernel's progress on.
class ProgressIndicator : public Message_ProgressIndicator {
public:
    explicit ProgressIndicator(Reporter& reporter) : m_reporter(reporter) {}

private:
    void Show(const Message_ProgressScope&, const Standard_Boolean) override {
        m_reporter.advance(GetPosition());
    }

    Reporter& m_reporter;
};

/// Makes log lines of the kernel's messages and keeps the last error among them.
class LogPrinter : public Message_Printer {
public:
    explicit LogPrinter(Reporter& reporter) : m_reporter(reporter) {}

    const std::string& lastError() const { return m_lastError; }

private:
    void send(const TCollection_AsciiString& text, const Message_Gravity gravity) const override {
        const std::string_view line = trimmed({text.ToCString(), static_cast<std::size_t>(text.Length())});
        if (line.empty()) return;
        if (gravity >= Message_Alarm) m_lastError = line;
        m_reporter.log(levelOf(gravity), wideText(line));
    }

    static ELogEventLevelType levelOf(Message_Gravity gravity) {
        switch (gravity) {
        case Message_Trace:
            return ELogEventLevelType::verbose;
        case Message_Info:
            return ELogEventLevelType::information;
        case Message_Warning:
            return ELogEventLevelType::warning;
        default:
            return ELogEventLevelType::error;
        }
    }

    Reporter& m_reporter;
    mutable std::string m_lastError;
};

/// Turns the kernel's messages into log lines for as long as it lives.
class MessageCapture {
public:
    explicit MessageCapture(Reporter& reporter) : m_printer(new LogPrinter(reporter)) {
        Message::DefaultMessenger()->ChangePrinters().Clear();
        Message::DefaultMessenger()->AddPrinter(m_printer);
    }
    MessageCapture(const MessageCapture&) = delete;
    MessageCapture& operator=(const MessageCapture&) = delete;
    ~MessageCapture() { Message::DefaultMessenger()->RemovePrinter(m_printer); }

    const std::string& lastError() const { return m_printer->lastError(); }

private:
    Handle(LogPrinter) m_printer;
};

/// Whether the file holds UTF-8 and nothing else.
bool isUtf8(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    int expected = 0; // continuation bytes still to come
    for (std::istreambuf_iterator<char> byte(stream), end; byte != end; ++byte) {
        const auto bits = static_cast<unsigned char>(*byte);
        const bool isContinuation = (bits & 0xC0) == 0x80;
        if (isContinuation != (expected > 0)) return false;
        if (isContinuation)
            --expected;
        else if (bits >= 0x80)
            expected = bits >= 0xF0 ? 3 : bits >= 0xE0 ? 2 : 1;
    }
    return expected == 0;
}

/// Whether the text of the file is read for such entities, and the kernel's difficulties with them mean nothing.
bool isReadFromText(const Interface_Check& check) {
    constexpr std::string_view kinds[]{"StepAP242_",
                                       "StepDimTol_",
                                       "StepRepr_CompoundRepresentationItem",
                                       "StepRepr_IntegerRepresentationItem",
                                       "StepRepr_PropertyDefinition",
                                       "StepRepr_ValueRange",
                                       "StepShape_Dimensional",
                                       "StepShape_PlusMinus",
                                       "StepVisual_"};
    if (!check.HasEntity()) return false;
    const std::string_view type = check.Entity()->DynamicType()->Name();
    return std::ranges::any_of(kinds, [type](std::string_view kind) { return type.starts_with(kind); });
}

/// Reports everything the kernel found wrong with the file and returns how many errors there were.
int reportChecks(const Interface_CheckIterator& checks, const Handle(Interface_InterfaceModel) & file,
                 Reporter& reporter) {
    constexpr int mostLines = 100;
    int errors = 0;
    int lines = 0;
    const auto report = [&](ELogEventLevelType level, const Interface_Check& check, const char* text) {
        if (!reporter.isLogged(level) || ++lines > mostLines) return;
        const std::wstring place =
            check.HasEntity() ? L" at " + wideText(file->StringLabel(check.Entity())->ToCString()) : L"";
        const wchar_t* const kind = level == ELogEventLevelType::error ? L"Error" : L"Warning";
        reporter.log(level, kind + place + L": " + wideText(trimmed(text)));
    };
    for (checks.Start(); checks.More(); checks.Next()) {
        const Interface_Check& check = *checks.Value();
        if (isReadFromText(check)) continue;
        for (int i = 1; i <= check.NbFails(); ++i, ++errors)
            report(ELogEventLevelType::error, check, check.CFail(i));
        for (int i = 1; i <= check.NbWarnings(); ++i)
            report(ELogEventLevelType::warning, check, check.CWarning(i));
    }
    if (lines > mostLines)
        reporter.log(ELogEventLevelType::error, std::to_wstring(lines - mostLines) + L" more lines left out");
    return errors;
}

/// Reads a file with one of the kernel's readers, which have the same functions but no common base.
/// `basicReader` is the one that owns the session; `prepare()` is called once the file is in memory and
/// returns how many errors it found.
template <class Reader, class BasicReader, class Preparation>
Model read(Reader& reader, BasicReader& basicReader, const InputFile& input, Reporter& reporter,
           const Preparation& prepare) {
    const MessageCapture messages(reporter);
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");

    reporter.beginPulse(L"Reading " + wideText(input.path().filename().string()));
    if (reader.ReadFile(input.plainPath().c_str()) != IFSelect_RetDone)
        cannotRead(input.path(), "it is damaged or not of the format that its name tells" +
                                     (messages.lastError().empty() ? "" : " (" + messages.lastError() + ")"));
    if (reader.NbRootsForTransfer() == 0) cannotRead(input.path(), "it holds no model");

    Model model{new TDocStd_Document("BinXCAF")};
    model.errors = prepare();
    XCAFDoc_DocumentTool::Set(model.document->Main(), Standard_False);
    XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
    reporter.beginStage(L"Translating shapes");
    const Handle(ProgressIndicator) progress = new ProgressIndicator(reporter);
    const bool isTransferred = reader.Transfer(model.document, progress->Start());

    const Handle(XSControl_WorkSession) session = basicReader.WS();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    reporter.watch().begin(L"Checking the file");
    // As session->ModelCheckList() does, which makes another graph of all entities for it.
    model.errors +=
        reportChecks(Interface_CheckTool(session->HGraph()).CompleteCheckList(), session->Model(), reporter) +
        reportChecks(process->CheckList(Standard_False), session->Model(), reporter);
    reporter.watch().begin(L"Relating shapes to the file");
    if (!isTransferred) cannotRead(input.path(), "none of its shapes could be translated");
    return model;
}

/// What all entities of a file have in common that say something about a quantity; 0 if none does or they
/// disagree. `valueIn` gives an entity's value, or nothing.
template <class ValueIn>
double commonValue(const Handle(Interface_InterfaceModel) & file, const ValueIn& valueIn) {
    std::optional<double> common;
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const std::optional<double> value = valueIn(file->Value(i));
        if (value && common && *value != *common) return 0;
        if (value) common = value;
    }
    return common.value_or(0);
}

/// The kernel converts the volume in the densities of a STEP file to cubic centimetres but leaves the mass in
/// the file's unit: gives that in grams, 0 for one beyond the SI.
std::optional<double> massUnitIn(const Handle(Standard_Transient) & entity) {
    if (entity->IsKind(STANDARD_TYPE(StepBasic_ConversionBasedUnitAndMassUnit))) return 0;
    const auto si = Handle(StepBasic_SiUnitAndMassUnit)::DownCast(entity);
    if (si.IsNull()) return std::nullopt;
    return si->HasPrefix() ? STEPConstruct_UnitContext::ConvertSiPrefix(si->Prefix()) : 1;
}

Model readStep(const InputFile& input, const ImportSettings&, Reporter& reporter) {
    STEPCAFControl_Reader reader;
    reader.SetColorMode(Standard_True);
    reader.SetNameMode(Standard_True);
    reader.SetLayerMode(Standard_True);
    reader.SetPropsMode(Standard_True);
    reader.SetMatMode(Standard_True);
    reader.SetGDTMode(Standard_False);
    reader.SetViewMode(Standard_False);
    // Many writers put names into the file in the code page of their machine.
    Interface_Static::SetCVal("read.step.codepage", isUtf8(input.plainPath()) ? "UTF8" : "CP1252");
    const auto prepare = [&] { return dropMissing(reader.Reader().Model(), reporter); };
    Model model = read(reader, reader.ChangeReader(), input, reporter, prepare);
    const Handle(Interface_InterfaceModel) file = reader.Reader().Model();
    model.remarks = passedOver(file);
    if (const int added = addUnreferenced(reader, model.document); added == 1)
        model.remarks.push_back(L"holds a shape that no part refers to; it travels as a part of its own");
    else if (added > 1)
        model.remarks.push_back(L"holds " + std::to_wstring(added) +
                                L" shapes that no part refers to; they travel as parts of their own");
    const ReferredFiles others = referredFiles(reader);
    for (const std::wstring& name : others.missing)
        model.remarks.push_back(L"refers to the file '" + name + L"', which is not beside it");
    addOrigins(reader.Reader().WS(), model.origins);
    for (const auto& session : others.sessions) addOrigins(session, model.origins);
    model.products = productDefinitions(reader.Reader().WS(), reader.GetShapeLabelMap());
    model.lengthFactors = lengthFactors(reader.Reader().WS());
    model.densityUnit = commonValue(file, massUnitIn);
    return model;
}

/// Hides the shapes that the file blanks, which the kernel passes over.
void hideBlanked(const Model& model, const Handle(XSControl_WorkSession) & session) {
    const auto shapes = XCAFDoc_DocumentTool::ShapeTool(model.document->Main());
    const auto colors = XCAFDoc_DocumentTool::ColorTool(model.document->Main());
    for (int i = 1; i <= session->Model()->NbEntities(); ++i) {
        const auto entity = Handle(IGESData_IGESEntity)::DownCast(session->Model()->Value(i));
        if (entity.IsNull() || entity->BlankStatus() == 0) continue;
        const TopoDS_Shape shape =
            TransferBRep::ShapeResult(session->TransferReader()->TransientProcess(), entity);
        if (TDF_Label label; !shape.IsNull() && shapes->Search(shape, label, true, true, false))
            colors->SetVisibility(label, false);
    }
}

Model readIges(const InputFile& input, const ImportSettings& settings, Reporter& reporter) {
    IGESCAFControl_Reader reader;
    Model model =
        read(reader, reader, input, reporter, [&] { return nameGroups(reader.IGESModel(), reporter); });
    addOrigins(reader.WS(), model.origins);
    hideBlanked(model, reader.WS());
    const auto file = Handle(IGESData_IGESModel)::DownCast(reader.Model());
    model.remarks = passedOver(file);
    model.iges = readIgesContents(reader.WS());
    if (settings.miscData) model.directory = readIgesDirectory(file);
    model.lengthUnit = chooseLengthUnit(settings.lengthUnit, file->GlobalSection().UnitValue(), reporter);
    return model;
}

/// A format and the function that reads it.
struct FormatReader {
    EFormatType type;
    std::shared_ptr<Format> format;
    Model (*read)(const InputFile&, const ImportSettings&, Reporter&);
};

FormatReader formatReader(EFormatType type, const wchar_t* description,
                          std::initializer_list<std::wstring> extensions, decltype(FormatReader::read) read) {
    const auto format = std::make_shared<Format>();
    format->setDescription(description);
    for (const std::wstring& extension : extensions) {
        format->addExtension(extension);
        format->addFilterExtensions(L"*." + extension);
    }
    return {type, format, read};
}

const std::vector<FormatReader>& formatReaders() {
    static const std::vector<FormatReader> readers = {
        formatReader(EFormatType::STEP, L"STEP files",
                     {L"stp", L"step", L"p21", L"stp.gz", L"step.gz", L"p21.gz"}, &readStep),
        formatReader(EFormatType::IGES, L"IGES files", {L"igs", L"iges", L"igs.gz", L"iges.gz"}, &readIges),
    };
    return readers;
}

const FormatReader& formatReaderFor(const InputFile& input) {
    for (const FormatReader& reader : formatReaders())
        if (reader.format->is(transport::fromUtf8(input.path().string()))) return reader;
    cannotRead(input.path(),
               "its name belongs to none of the formats STEP (.stp, .step, .p21) and IGES (.igs, "
               ".iges), packed by gzip (.gz) or not");
}

} // namespace

const std::vector<std::shared_ptr<Format>>& importFormats() {
    static const auto formats = [] {
        std::vector<std::shared_ptr<Format>> result;
        for (const FormatReader& reader : formatReaders()) result.push_back(reader.format);
        return result;
    }();
    return formats;
}

EFormatType formatOf(const InputFile& input) { return formatReaderFor(input).type; }

Model readModel(const InputFile& input, const ImportSettings& settings, Reporter& reporter) {
    return formatReaderFor(input).read(input, settings, reporter);
}

} // namespace zeq::convexor
