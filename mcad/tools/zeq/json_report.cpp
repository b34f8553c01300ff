// Members and their order: version, command, file, documents, contents, summary, warnings, exit_code, error.
#include "zeq/json_report.h"

#include "text/text.h"

namespace zeq::host {

namespace {

constexpr int version = 1;

std::string array(const std::vector<std::string>& elements) {
    std::string result = "[";
    for (const std::string& element : elements) {
        if (result.size() > 1) result += ',';
        result += '\n' + element;
    }
    return result + ']';
}

} // namespace

std::string jsonStrings(const std::vector<std::string>& texts) {
    std::string json;
    for (const std::string& each : texts) json += (json.empty() ? "" : ",") + text::jsonString(each);
    return '[' + json + ']';
}

void JsonReport::setCommand(const std::string& command, const std::string& file) {
    m_command = text::jsonString(command);
    if (!file.empty()) m_file = text::jsonString(file);
}

void JsonReport::addDocument(const std::wstring& text) {
    if (m_enabled) m_documents.push_back(text::validUtf8(text));
}

void JsonReport::addContent(const std::wstring& bufferName, const std::string& data) {
    m_contents.push_back("{\"buffer\":" + text::jsonString(bufferName) + ",\"data\":" + data + "}");
}

std::string JsonReport::text(const std::vector<std::string>& warnings, int exitCode,
                             const std::string& error) const {
    return "{\"version\":" + std::to_string(version) + ",\n\"command\":" + m_command +
           ",\n\"file\":" + m_file + ",\n\"documents\":" + array(m_documents) +
           ",\n\"contents\":" + array(m_contents) + ",\n\"summary\":" + m_summary +
           ",\n\"warnings\":" + jsonStrings(warnings) + ",\n\"exit_code\":" + std::to_string(exitCode) +
           ",\n\"error\":" + (error.empty() ? "null" : text::jsonString(error)) + "}\n";
}

} // namespace zeq::host
