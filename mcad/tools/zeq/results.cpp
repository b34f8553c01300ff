// What the codes of a result mean for the user.
#include "zeq/results.h"

#include "text/text.h"
#include "zeq_api/command/result.h"

namespace zeq::host {

bool takeResult(const Host& host, const Document& document) {
    Result result;
    document.readInto(result);
    const std::string message = text::printable(result.message());
    const auto fail = [&message](int exitCode, const std::string& what) {
        throw Failure(exitCode, message.empty() ? what : what + ": " + message);
    };
    switch (result.code()) {
    case Result::ECode::ok:
        if (!message.empty()) host.console.message(message);
        break;
    case Result::ECode::warning:
        host.console.warning(message.empty() ? "the translator has doubts" : message);
        break;
    case Result::ECode::error:
        fail(exit_code::translatorFailed, "the translator reports a failure");
        break;
    case Result::ECode::interrupted:
        fail(exit_code::translatorFailed, "the translator was interrupted");
        break;
    case Result::ECode::unknown:
        fail(exit_code::translatorBroken, "the translator sent a result without a known code");
    }
    return result.isFinished();
}

Failure unexpected(const Document& document) {
    const std::string name = text::printable(document.objectName());
    return Failure(exit_code::translatorBroken,
                   "the translator sent a document that does not answer the command" +
                       (name.empty() ? "" : " ('" + name + "')"));
}

} // namespace zeq::host
