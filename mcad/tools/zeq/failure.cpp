// Wording of failures.
#include "zeq/failure.h"

#include <system_error>

#include "mp/exception.h"
#include "text/text.h"

namespace zeq::host {

std::string cannot(const std::string& verb, const std::string& thing, const std::string& reason) {
    return "Cannot " + verb + " '" + text::printable(thing) + "': " + reason;
}

std::string currentReason() {
    try {
        throw;
    } catch (const mp::Exception& error) {
        return text::printable(error.message()); // what() may belong to an earlier exception
    } catch (const std::system_error& error) {
        return error.code().message();
    } catch (const std::bad_alloc&) {
        return "not enough memory";
    } catch (const std::exception& error) {
        return text::printable(error.what());
    }
}

} // namespace zeq::host
