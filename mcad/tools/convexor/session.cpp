// Reads commands and turns whatever happens into results.
#include "convexor/session.h"

#include <exception>
#include <memory>
#include <sstream>

#include <Standard_Failure.hxx>

#include "convexor/description.h"
#include "convexor/geometry_builder.h"
#include "convexor/geometry_figures.h"
#include "convexor/import_settings.h"
#include "convexor/log_file.h"
#include "convexor/model_reader.h"
#include "convexor/reporter.h"
#include "convexor/structure_builder.h"
#include "convexor/text.h"
#include "mp/exception.h"
#include "transport/frame.h"
#include "transport/utf8.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"
#include "zeq_api/exchange_object/messages.h"

namespace zeq::convexor {

namespace {

Result makeResult(Result::ECode code, const std::wstring& message = {}) {
    Result result;
    result.setCode(code);
    result.setMessage(message);
    result.setFinished(true);
    return result;
}

Result failure(const std::wstring& message) { return makeResult(Result::ECode::error, message); }

std::wstring countText(std::size_t count, const wchar_t* noun) {
    return std::to_wstring(count) + L' ' + noun + (count == 1 ? L"" : L"s");
}

std::wstring summary(const ExcProductStructure& product) {
    std::size_t references = product.rootBlockReferences().size();
    for (const ExcBlockPtr& block : product.blocks()) references += block->blockReferences().size();
    return countText(product.blocks().size(), L"block") + L", " + countText(references, L"reference");
}

/// Does some work for each part and returns for how many that failed; log lines say which have no such thing.
template <class Work>
int forEachPart(const Structure& structure, const wchar_t* thing, ELogEventLevelType level,
                Reporter& reporter, const Work& work) {
    int errors = 0;
    std::size_t done = 0;
    for (const Structure::Part& part : structure.parts) {
        const auto report = [&](const std::wstring& reason) {
            ++errors;
            reporter.log(level, L"Block '" + part.block->name() + L"' has no " + thing + L": " + reason);
        };
        try {
            work(part);
        } catch (const std::runtime_error& error) {
            report(wideText(error.what()));
        } catch (const Standard_Failure& error) {
            report(wideText(error.DynamicType()->Name()) + L" " + wideText(error.GetMessageString()));
        }
        reporter.advance(static_cast<double>(++done) / static_cast<double>(structure.parts.size()));
    }
    return errors;
}

} // namespace

void Session::run() {
    transport::FrameReader reader(m_input);
    for (std::wstring text; reader.next(text);) {
        m_channel.expectAnswer();
        m_channel.answer(execute(text));
    }
}

Result Session::execute(const std::wstring& text) {
    try {
        Command command;
        std::wistringstream stream(text);
        command.readObject(stream);

        const bool isLegacy = command.internalInterface() == EConvexorInterface::legacy;
        switch (command.type()) {
        case Command::EType::ping:
            return makeResult(Result::ECode::ok);
        case Command::EType::info:
            m_channel.send(describeTranslator());
            return makeResult(Result::ECode::ok);
        case Command::EType::import:
            if (isLegacy) return failure(L"The legacy interface is not supported by this translator.");
            return import(*command.importOptions(), text);
        case Command::EType::export_:
            return failure(L"Export is not supported by this translator.");
        case Command::EType::unknown:
            break;
        }
        return failure(L"The command is unknown to this translator.");
    } catch (const mp::Exception& error) {
        return failure(error.message());
    } catch (const std::exception& error) {
        return failure(wideText(error.what()));
    } catch (const Standard_Failure& error) {
        return failure(L"The CAD kernel failed: " + wideText(error.DynamicType()->Name()) + L" " +
                       wideText(error.GetMessageString()));
    }
}

Result Session::import(const ImportOptions& options, const std::wstring& commandText) {
    const InterruptionWatch::Work work(m_watch);
    Reporter reporter(m_channel);
    if (const auto general = findGroup<OptionsGeneral>(options)) {
        startLog(*general);
        reporter.limitLog(general->logEventLevel());
    }
    const InputFile input(transport::toUtf8(options.file()));
    const std::wstring name = wideText(input.path().filename().string());

    const ImportSettings settings = importSettings(options, commandText, formatOf(input), reporter);
    const Model model = readModel(input, settings, reporter);
    reporter.beginPulse(L"Building the product structure");
    const Structure structure = buildProductStructure(model, name, settings);
    if (settings.miscData && settings.geometry) measureGeometry(structure, model.lengthUnit, reporter);
    const std::wstring quoted = L"'" + name + L"'";
    reporter.message(quoted + L": " + summary(*structure.product));
    for (const std::wstring& remark : model.remarks)
        reporter.message(std::wstring(quoted).append(L" ").append(remark));
    reporter.beginPulse(L"Sending the product structure");
    m_channel.send(structure.product);
    m_channel.send(std::make_shared<ExcStageFinished>(ExcStageFinished::EStage::product_structure));
    const int errors =
        model.errors + (settings.geometry ? sendGeometry(structure, model.lengthUnit, reporter) : 0);

    if (errors == 0) return makeResult(Result::ECode::ok);
    return makeResult(Result::ECode::warning, L"'" + name + L"' was read with " +
                                                  countText(errors, L"error") +
                                                  L"; the log lines name them.");
}

void Session::measureGeometry(const Structure& structure, const LengthUnit& unit, Reporter& reporter) {
    reporter.beginStage(L"Measuring geometry");
    const auto measure = [&unit](const Structure::Part& part) {
        ExcMiscPropertiesGroup figures = geometryFigures(part.shape, unit);
        if (!figures.properties().empty()) part.block->miscData().addGroup(std::move(figures));
    };
    forEachPart(structure, L"figures of its geometry", ELogEventLevelType::warning, reporter, measure);
}

int Session::sendGeometry(const Structure& structure, const LengthUnit& unit, Reporter& reporter) {
    reporter.beginStage(L"Sending geometry");
    BuildNotes all;
    const auto send = [&](const Structure::Part& part) {
        BuildNotes notes;
        const OwnedEntities entities(buildBody(part.shape, 1 / unit.millimeters, &notes));
        const auto report = [&](ELogEventLevelType level, const std::vector<std::string>& lines) {
            for (const std::string& line : lines)
                reporter.log(level, L"Block '" + part.block->name() + L"': " + wideText(line));
        };
        report(ELogEventLevelType::error, notes.errors);
        report(ELogEventLevelType::warning, notes.warnings);
        all.lost += notes.lost;
        if (entities.list.count() == 0) return;
        const auto geometry = std::make_shared<ExcBlockGeometry>();
        geometry->setBlockId(part.block->id());
        m_channel.send(geometry, entities.list, m_compress);
        all.faces += notes.faces;
        all.wires += notes.wires;
    };
    const int failures = forEachPart(structure, L"geometry", ELogEventLevelType::error, reporter, send);
    if (all.faces + all.wires + all.lost == 0) reporter.message(L"There is no exact geometry in this file");
    if (all.wires > 0 || all.lost > 0)
        reporter.message(L"Sent " + countText(all.faces, L"face") + L" and " + countText(all.wires, L"wire") +
                         L"; " + std::to_wstring(all.lost) + L" left out");
    return failures + all.lost;
}

} // namespace zeq::convexor
