// Reading the array; what makes a group is the library's to decide.
#include "zeq/format_options_file.h"

#include "zeq/failure.h"
#include "zeq/json_file.h"

namespace zeq::host {

void readFormatOptions(const std::string& path, transport::SignalPipe& signals, ImportOptions& options) {
    const auto refuse = [&path](const std::string& reason) {
        throw Failure(exit_code::inputOutput, cannot("use the options of", path, reason));
    };
    JsonDocument groups;
    std::string problem;
    if (!readJsonFile(path, signals, groups, problem)) refuse(problem);
    if (!groups.IsArray()) refuse("not a JSON array of option groups");
    for (rapidjson::SizeType i = 0; i < groups.Size(); ++i) {
        std::shared_ptr<IFormatOptions> group = IFormatOptions::readOptions(groups[i]);
        if (!group) refuse("element [" + std::to_string(i) + "] is no option group that this version knows");
        options.setFormatOptions(std::move(group));
    }
}

} // namespace zeq::host
