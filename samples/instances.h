// Instances that are appended to a STEP file which something else has written.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace samples {

class Instances {
public:
    /// @param last the largest number in the file
    explicit Instances(int last) : m_last(last) {}

    /// Adds an instance and gives its number.
    /// @param entity as it stands behind the number: "DATUM('',$,#4,.F.,'A')"
    int add(const std::string& entity);
    /// @throws std::runtime_error when the file is no exchange structure, or cannot be written
    void appendTo(const std::filesystem::path& path) const;

private:
    int m_last;
    std::string m_text;
};

/// "#12"
std::string ref(int number);
/// "(#1,#2)"
std::string refs(const std::vector<int>& numbers);
/// "('text')" without the parentheses; other than ASCII is encoded.
std::string quoted(const std::u32string& text);
/// "0.5", "3."
std::string real(double number);

} // namespace samples
