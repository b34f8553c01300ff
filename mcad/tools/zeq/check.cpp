// From files to findings: single documents, bare objects, and the reports that zeq itself prints.
#include "zeq/check.h"

#include <array>
#include <vector>

#include "inspection/document_classes.h"
#include "inspection/linter.h"
#include "inspection/relations.h"
#include "text/text.h"
#include "zeq/class_argument.h"
#include "zeq/failure.h"
#include "zeq/json_file.h"
#include "zeq_api/json/dom_model.h"

namespace zeq::host {

namespace {

using inspection::Finding;
using inspection::Severity;

/// One file with what was found in it.
class CheckedFile {
public:
    CheckedFile(const std::string& path, const json::FormInfo* form) : m_path(path), m_form(form) {}

    void check(transport::SignalPipe& signals) {
        JsonDocument document;
        std::string problem;
        if (!readJsonFile(m_path, signals, document, problem)) return add(problem);
        const JsonValue* documents = json::findMember(document, L"documents");
        const JsonValue* contents = json::findMember(document, L"contents");
        if (!m_form && documents && contents && documents->IsArray() && contents->IsArray())
            return checkReport(*documents, *contents);
        inspection::Relations relations([this](const Finding& finding) { add(finding); },
                                        inspection::openSharedBuffer, true);
        checkDocument(document, {}, inspection::openSharedBuffer, relations);
        relations.finish();
    }

    std::size_t count(Severity severity) const { return m_counts[static_cast<std::size_t>(severity)]; }
    std::string text() const {
        std::string text;
        for (const Finding& finding : m_findings) {
            const std::string place =
                finding.buffer.empty() ? finding.pointer : text::printable(finding.buffer) + finding.pointer;
            text += text::printable(m_path) + '#' + text::printable(place) + ": " +
                    inspection::nameOf(finding.severity) + ": " + inspection::fullText(finding) + '\n';
        }
        return text.empty() ? text::printable(m_path) + ": " + m_className + ", nothing found\n" : text;
    }
    std::string json() const;

private:
    using Prefix = std::string;

    void checkDocument(const JsonValue& document, const Prefix& prefix, const inspection::OpenBuffer& open,
                       inspection::Relations& relations) {
        const json::FormInfo* form = m_form ? m_form : inspection::recognise(document);
        if (!form) {
            const json::FormInfo* closest = inspection::closestClass(document);
            return add("this is none of the documents that travel alone; --class tells what it is" +
                           (closest ? ", perhaps " + closest->className() : ""),
                       prefix);
        }
        m_className = form->className();
        const auto report = [&](const Finding& finding) {
            Finding placed = finding;
            if (placed.buffer.empty()) placed.pointer.insert(0, prefix);
            add(placed);
        };
        inspection::lint(document, *form, report, open);
        relations.add(document, *form, prefix);
    }
    /// What zeq prints with --json: documents, and the contents of the buffers that they name.
    void checkReport(const JsonValue& documents, const JsonValue& contents);

    void add(const Finding& finding) {
        ++m_counts[static_cast<std::size_t>(finding.severity)];
        m_findings.push_back(finding);
    }
    void add(const std::string& error, const Prefix& place = {}) {
        add(Finding{Severity::error, {}, place, error, {}, {}});
    }

    std::string m_path;
    const json::FormInfo* m_form;
    std::string m_className;
    std::vector<Finding> m_findings;
    std::array<std::size_t, 3> m_counts{};
};

void CheckedFile::checkReport(const JsonValue& documents, const JsonValue& contents) {
    const auto open = [&contents](const std::wstring& name, JsonDocument& content) {
        for (const JsonValue& entry : contents.GetArray()) {
            const JsonValue* buffer = findString(entry, L"buffer");
            const JsonValue* data = json::findMember(entry, L"data");
            if (!buffer || !data || name != std::wstring(buffer->GetString(), buffer->GetStringLength()))
                continue;
            content.CopyFrom(*data, content.GetAllocator());
            return;
        }
        inspection::openSharedBuffer(name, content);
    };
    inspection::Relations relations([this](const Finding& finding) { add(finding); }, open, false);
    for (rapidjson::SizeType i = 0; i < documents.Size(); ++i)
        checkDocument(documents[i], "/documents/" + std::to_string(i), open, relations);
    relations.finish();
    m_className = text::counted(documents.Size(), "document", "documents");
}

std::string CheckedFile::json() const {
    std::string findings;
    for (const Finding& finding : m_findings) {
        findings += std::string(findings.empty() ? "" : ",") + "\n{\"severity\":\"" +
                    inspection::nameOf(finding.severity) +
                    "\",\"buffer\":" + (finding.buffer.empty() ? "null" : text::jsonString(finding.buffer)) +
                    ",\"pointer\":" + text::jsonString(finding.pointer) +
                    ",\"text\":" + text::jsonString(finding.text) +
                    ",\"nearest\":" + (finding.nearest.empty() ? "null" : text::jsonString(finding.nearest)) +
                    ",\"allowed\":" + jsonStrings(finding.allowed) + "}";
    }
    return "{\"file\":" + text::jsonString(m_path) +
           ",\"class\":" + (m_className.empty() ? "null" : text::jsonString(m_className)) +
           ",\"findings\":[" + findings + "]}";
}

} // namespace

int checkFiles(const Host& host, Output& output) {
    const json::FormInfo* form =
        host.settings.className.empty() ? nullptr : &requireClass(host.settings.className);
    std::string files;
    std::array<std::size_t, 3> counts{};
    for (const std::string& path : host.settings.files) {
        CheckedFile file(path, form);
        file.check(host.signals);
        for (std::size_t i = 0; i < counts.size(); ++i) counts[i] += file.count(static_cast<Severity>(i));
        if (host.settings.json)
            files += (files.empty() ? "\n" : ",\n") + file.json();
        else
            output.write(file.text());
    }
    const auto [errors, warnings, notes] = counts;
    host.report.setSummary("{\"errors\":" + std::to_string(errors) +
                           ",\"warnings\":" + std::to_string(warnings) +
                           ",\"notes\":" + std::to_string(notes) + ",\"files\":[" + files + "]}");
    return errors + warnings == 0 ? exit_code::done : exit_code::negative;
}

} // namespace zeq::host
