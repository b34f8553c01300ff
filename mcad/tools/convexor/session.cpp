// Reads commands and turns whatever happens into results.
#include "convexor/session.h"

#include <exception>
#include <sstream>

#include <Standard_Failure.hxx>

#include "convexor/description.h"
#include "convexor/import_job.h"
#include "convexor/log_file.h"
#include "convexor/text.h"
#include "mp/exception.h"
#include "transport/frame.h"
#include "transport/utf8.h"

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
    const ImportSettings settings = importSettings(options, commandText, formatOf(input), reporter);
    const int errors = ImportJob(settings, m_compress, m_channel, reporter).run(input);
    if (errors == 0) return makeResult(Result::ECode::ok);
    return makeResult(Result::ECode::warning, L"'" + wideText(input.path().filename().string()) +
                                                  L"' was read with " + std::to_wstring(errors) +
                                                  (errors == 1 ? L" error" : L" errors") +
                                                  L"; the log lines name them.");
}

} // namespace zeq::convexor
