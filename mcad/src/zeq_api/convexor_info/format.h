// A file format that the translator can read or write. Objects are used by one thread at a time.
#pragma once

#include <string>
#include <vector>

#include "zeq_api/json/json_object.h"

namespace zeq {

/// A file format: its description, its file extensions and its file dialog patterns.
class Format : public IJsonObject {
public:
    /// @throws std::invalid_argument if `object` is no object
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& description() const { return m_description; }
    void setDescription(const std::wstring& description) { m_description = description; }

    /// File extensions without the dot; one entry may hold several, parted by ";", and "*" for any text.
    const std::vector<std::wstring>& extensions() const { return m_extensions; }
    void setExtensions(const std::vector<std::wstring>& extensions) { m_extensions = extensions; }
    void addExtension(const std::wstring& extension) { m_extensions.push_back(extension); }

    /// Regular expressions for whole paths in lower case. They stay in this process.
    const std::vector<std::wstring>& regex() const { return m_regex; }
    void setRegex(const std::vector<std::wstring>& patterns) { m_regex = patterns; }
    void addRegex(const std::wstring& pattern) { m_regex.push_back(pattern); }

    /// Adds a file dialog pattern, such as "*.stp".
    void addFilterExtensions(const std::wstring& pattern) { m_filterExtensions.push_back(pattern); }
    /// The file dialog entries, such as "STEP files|*.stp", one for each pattern.
    std::vector<std::wstring> getFilters() const;

    /// Whether a file of this path belongs to the format by its name, in whatever case.
    /// @throws std::regex_error for a regular expression that is invalid, over 4096 characters long, or
    /// refers
    ///         back to a group while the path is over 4096 characters long
    bool is(const std::wstring& path) const;

private:
    struct JsonForm;

    std::wstring m_description;
    std::vector<std::wstring> m_extensions;
    std::vector<std::wstring> m_filterExtensions;
    std::vector<std::wstring> m_regex;
};

} // namespace zeq
