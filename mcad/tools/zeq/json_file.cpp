// From bytes to a document.
#include "zeq/json_file.h"

#include <sstream>

#include "transport/utf8.h"
#include "zeq/interruptible.h"
#include "zeq_api/json/text_io.h"

namespace zeq::host {

bool readJsonFile(const std::string& path, transport::SignalPipe& signals, JsonDocument& document,
                  std::string& problem, std::wstring* text) {
    const std::string bytes = readAll(path, signals);
    try {
        const std::wstring wide = transport::fromUtf8(bytes);
        if (text) *text = wide;
        std::wistringstream stream(wide);
        if (JsonTextIO::read(stream, document, &problem)) return true;
        problem = "not a JSON document (" + problem + ")";
    } catch (const transport::EncodingError& error) {
        problem = error.what();
    }
    return false;
}

} // namespace zeq::host
