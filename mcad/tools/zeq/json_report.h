// The one JSON document that --json prints, whatever happens.
#pragma once

#include <string>
#include <vector>

namespace zeq::host {

/// A JSON array of these texts.
std::string jsonStrings(const std::vector<std::string>& texts);

/// Collects what arrives. Off, it collects nothing.
class JsonReport {
public:
    explicit JsonReport(bool enabled) : m_enabled(enabled) {}
    bool isEnabled() const { return m_enabled; }

    void setCommand(const std::string& command, const std::string& file);
    /// A document, which is JSON, as it arrived.
    void addDocument(const std::wstring& text);
    /// What a shared buffer held, as JSON in UTF-8.
    void addContent(const std::wstring& bufferName, const std::string& data);
    /// A JSON object.
    void setSummary(const std::string& json) { m_summary = json; }

    /// The whole document; `error` is empty when all went well.
    std::string text(const std::vector<std::string>& warnings, int exitCode, const std::string& error) const;

private:
    bool m_enabled;
    std::string m_command = "null";
    std::string m_file = "null";
    std::vector<std::string> m_documents;
    std::vector<std::string> m_contents;
    std::string m_summary = "null";
};

} // namespace zeq::host
