// One import from the file to the last document.
#pragma once

#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "convexor/channel.h"
#include "convexor/geometry_builder.h"
#include "convexor/import_settings.h"
#include "convexor/in_order.h"
#include "convexor/input_file.h"
#include "convexor/model_reader.h"
#include "convexor/reporter.h"
#include "convexor/step_contents.h"
#include "convexor/structure_builder.h"

namespace zeq::convexor {

/// Reads a file and sends what the settings ask for, in this order: what the text of a STEP file says beside shapes,
/// the product structure, the geometry of each part, its scene, what its faces are in the file, the scene of the
/// assembly, and the account of what was left out.
class ImportJob {
    /// What is to be shown of a part's shape.
    struct ShownShape {
        ExcVisualizationDataPtr scene; ///< null if there is nothing
        std::vector<std::string> losses;
    };

public:
    ImportJob(const ImportSettings& settings, bool compress, Channel& channel, Reporter& reporter)
        : m_settings(settings), m_compress(compress), m_channel(channel), m_reporter(reporter) {}

    /// @return how many things failed; the log lines name them
    /// @throws ImportError when the file or its format is at fault
    /// @throws Standard_Failure when the kernel gives up
    int run(const InputFile& input);

private:
    /// What the text of a STEP file says; nothing of others, and of what is none.
    void readContents(const InputFile& input);
    void readStructure(const InputFile& input, const std::wstring& name);
    void readStructure(const InputFile& input, const std::wstring& name, const step::SparedUsages& spared);
    void sendStructure(const std::wstring& name);
    /// Gives the block of each part the figures of its geometry.
    void measureGeometry();
    /// Each sends something of each part and returns for how many that failed.
    int sendGeometry();
    int sendScenes();
    /// What is drawn on assemblies, but for that of the root, whose scene is that of the whole.
    void sendScenesOfAssemblies();
    void sendScene(const ExcBlock& block, const ExcVisualizationDataPtr& scene);
    void sendMappings();
    void sendRootScene();
    void sendReport();
    void accountForStep();

    /// Does some work for each part and returns for how many that failed; log lines say which have no such thing.
    template <class Work>
    int forEachPart(const wchar_t* thing, ELogEventLevelType level, const Work& work);
    /// What some work gives of each part, which several threads may do at once unless parts share their shapes.
    template <class Result>
    InOrder<Result> fromEachPart(Result (ImportJob::*work)(const Structure::Part&));
    /// Whether faces or edges are in several parts.
    bool arePartsEntangled() const;
    ExcMiscPropertiesGroup measure(const Structure::Part& part);
    /// Tessellates a part, if that is wanted.
    ShownShape showShape(const Structure::Part& part);
    /// Adds to the scene of a part, or to none, its triangles and annotations; null if there is nothing to show.
    ExcVisualizationDataPtr complete(const Structure::Part& part, ExcVisualizationDataPtr scene);
    void account(const BuildNotes& notes);

    const ImportSettings& m_settings;
    const bool m_compress;
    Channel& m_channel;
    Reporter& m_reporter;

    bool m_isStep = false;
    StepContents m_contents; ///< of a STEP file; of others, only the report
    IgesOutcome m_iges;      ///< of an IGES file
    Model m_model;
    Structure m_structure;
    std::set<std::uint32_t> m_colors; ///< that scenes show
    std::mutex m_document;            ///< of the kernel, which is not made for several threads
};

} // namespace zeq::convexor
