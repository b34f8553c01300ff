// The text of ISO 10303-21.
#include "instances.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace samples {

int Instances::add(const std::string& entity) {
    m_text += ref(++m_last) + '=' + entity + ";\n";
    return m_last;
}

void Instances::appendTo(const std::filesystem::path& path) const {
    std::string text;
    {
        std::ifstream in(path, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(in), {});
    }
    const std::size_t end = text.rfind("ENDSEC;");
    if (end == std::string::npos)
        throw std::runtime_error("'" + path.string() + "' is no exchange structure");
    text.insert(end, m_text);
    std::ofstream out(path, std::ios::binary);
    out << text;
    out.close();
    if (!out) throw std::runtime_error("Cannot write '" + path.string() + "'");
}

std::string ref(int number) { return '#' + std::to_string(number); }

std::string refs(const std::vector<int>& numbers) {
    std::string text = "(";
    for (const int number : numbers) text += (text.size() > 1 ? "," : "") + ref(number);
    return text + ')';
}

std::string quoted(const std::u32string& text) {
    std::string result = "'";
    for (const char32_t c : text) {
        if (c >= ' ' && c < 0x7F && c != '\'' && c != '\\') {
            result += static_cast<char>(c);
            continue;
        }
        std::array<char, 32> code{};
        std::snprintf(code.data(), code.size(), "\\X4\\%08X\\X0\\", static_cast<unsigned>(c));
        result += code.data();
    }
    return result + '\'';
}

std::string real(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.9G", number + 0.0); // no negative zero
    std::string result = text.data();
    if (result.find('.') == std::string::npos) {
        const std::size_t exponent = std::min(result.find('E'), result.size());
        result.insert(exponent, ".");
    }
    return result;
}

} // namespace samples
