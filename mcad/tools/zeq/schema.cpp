// The schema as text.
#include "zeq/schema.h"

#include <sstream>

#include "inspection/schema.h"
#include "zeq/class_argument.h"
#include "zeq_api/json/text_io.h"

namespace zeq::host {

std::wstring schemaText(const std::string& className) {
    std::wostringstream text;
    JsonTextIO::write(text, inspection::makeSchema(className.empty() ? nullptr : &requireClass(className)),
                      1);
    return text.str();
}

} // namespace zeq::host
