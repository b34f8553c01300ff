// zeq_samples DIR: writes the sample models, or one large synthetic assembly, and prints the files' names.
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Standard_Failure.hxx>

#include "bench_vise.h"
#include "bracket.h"
#include "export.h"
#include "lattice.h"

namespace {

using namespace samples;

/// Writes a model with one of the writers and prints the file's name.
void write(Model& model, void (*writer)(Model&, const std::filesystem::path&),
           const std::filesystem::path& path) {
    writer(model, path);
    std::cout << path.string() << '\n';
}

void writeSamples(const std::filesystem::path& directory) {
    Model vise = makeBenchVise();
    write(vise, writeStep, directory / "bench_vise.stp");
    Model plate = makeJawPlateAlone();
    write(plate, writeStep, directory / "jaw_plate.stp");
    write(plate, writeIges, directory / "jaw_plate.igs");
    Model grip = makeGripAlone();
    write(grip, writeStep, directory / "grip.stp");
    Model fastener = makeLooseFastener();
    write(fastener, writeIges, directory / "fastener.igs");
    const std::filesystem::path bracket = directory / "bracket_pmi.stp";
    writeBracket(bracket);
    std::cout << bracket.string() << '\n';
}

void writeLattice(const std::filesystem::path& directory, const LatticeSize& size) {
    Model lattice = makeLattice(size);
    write(lattice, writeStep, directory / ("lattice_" + std::to_string(size.instances) + ".stp"));
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Writes sample CAD models: an assembly and parts as STEP, parts as IGES.");
    app.set_version_flag("--version", "zeq_samples " ZEQ_VERSION);
    std::string directory;
    LatticeSize size{0};
    app.add_option("DIR", directory, "directory for the files, made when missing")->required();
    CLI::Option* const instances =
        app.add_option("--instances", size.instances,
                       "write instead an assembly with this many placed parts as DIR/lattice_<number>.stp")
            ->check(CLI::Range(1, 1'000'000));
    app.add_option("--parts", size.parts,
                   "of so many different parts, which take turns; without it, one for each group")
        ->check(CLI::Range(1, 1'000'000))
        ->needs(instances);
    app.add_option("--faces", size.faces, "of so many faces each (6)")
        ->check(CLI::Range(6, 10'000'000))
        ->needs(instances);
    app.add_option("--group", size.groupSize, "in groups of this size (100)")
        ->check(CLI::Range(1, 1'000'000))
        ->needs(instances);
    app.footer("Exit codes: 0 done, 2 wrong usage, 3 a file could not be written.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }

    // The kernel prints statistics on standard output, which is for the files' names.
    Message::DefaultMessenger()->ChangePrinters().Clear();
    try {
        std::filesystem::create_directories(directory);
        if (size.instances > 0)
            writeLattice(directory, size);
        else
            writeSamples(directory);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "zeq_samples: " << error.what() << '\n';
    } catch (const Standard_Failure& failure) {
        std::cerr << "zeq_samples: the CAD kernel failed: " << failure.GetMessageString() << '\n';
    }
    return 3;
}
