// Widths of columns first, then line by line.
#include "text/table.h"

#include <algorithm>
#include <cwchar>
#include <sstream>

#include "transport/utf8.h"

namespace zeq::text {

namespace {

std::size_t columnsOf(wchar_t character) {
    return static_cast<std::size_t>(std::max(::wcwidth(character), 0));
}

/// A cell's lines, at least one.
std::vector<std::string> linesOf(const std::string& cell) {
    std::vector<std::string> lines;
    std::istringstream stream(cell);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    if (lines.empty()) lines.emplace_back();
    return lines;
}

} // namespace

std::size_t width(std::string_view text) {
    std::size_t columns = 0;
    for (const wchar_t character : transport::fromUtf8(text)) columns += columnsOf(character);
    return columns;
}

std::string shortened(const std::string& text, std::size_t mostColumns) {
    if (text.size() <= mostColumns || width(text) <= mostColumns) return text;
    const std::wstring wide = transport::fromUtf8(text);
    std::size_t end = 0;
    for (std::size_t columns = 1; end < wide.size(); ++end) {
        columns += columnsOf(wide[end]);
        if (columns > mostColumns) break;
    }
    return transport::toUtf8(std::wstring_view(wide).substr(0, end)) + "…";
}

std::string Table::text() const {
    std::vector<std::vector<std::vector<std::string>>> rows(
        1); // titles first; each row has cells, each cell lines
    for (const Column& column : m_columns) rows[0].push_back({column.title});
    std::vector<std::size_t> widths(m_columns.size());
    for (const std::vector<std::string>& cells : m_rows) {
        rows.emplace_back();
        for (std::size_t i = 0; i < cells.size(); ++i) {
            rows.back().push_back(linesOf(cells[i]));
            for (const std::string& line : rows.back().back()) widths[i] = std::max(widths[i], width(line));
        }
    }
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (widths[i] > 0) widths[i] = std::max(widths[i], width(m_columns[i].title));

    std::string text;
    for (const auto& row : rows) {
        std::size_t height = 0;
        for (const auto& cell : row) height = std::max(height, cell.size());
        for (std::size_t at = 0; at < height; ++at) {
            std::string line;
            for (std::size_t i = 0; i < row.size(); ++i) {
                if (widths[i] == 0) continue;
                const std::string part = at < row[i].size() ? row[i][at] : "";
                const std::string gap(widths[i] - width(part), ' ');
                line += "  " + (m_columns[i].isNumber ? gap + part : part + gap);
            }
            text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
        }
    }
    return text;
}

} // namespace zeq::text
