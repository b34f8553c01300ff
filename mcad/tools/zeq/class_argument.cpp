// The words for a class that is not there.
#include "zeq/class_argument.h"

#include <vector>

#include "inspection/document_classes.h"
#include "text/text.h"
#include "zeq/failure.h"

namespace zeq::host {

const json::FormInfo& requireClass(const std::string& name) {
    if (const json::FormInfo* form = inspection::findClass(name)) return *form;
    const std::vector<std::string> names = inspection::classNames();
    const std::string near = text::nearest(name, names);
    std::string list;
    std::string meant; // classes of several namespaces
    for (const std::string& each : names) {
        list += (list.empty() ? "" : ", ") + each;
        if (each.ends_with("::" + name)) meant += (meant.empty() ? "" : " or ") + each;
    }
    const std::string shown = "'" + text::printable(name) + "'";
    if (!meant.empty()) throw Failure(exit_code::usage, "the class " + shown + " may be " + meant);
    throw Failure(exit_code::usage,
                  "unknown class " + shown +
                      (near.empty() ? "; there are " : "; did you mean '" + near + "'? There are ") + list);
}

} // namespace zeq::host
