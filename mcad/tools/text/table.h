// Text in columns.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zeq::text {

/// The columns of a terminal that valid UTF-8 takes up, in the locale of the program.
std::size_t width(std::string_view text);

/// The first characters of valid UTF-8 that take up so many columns; what is cut off is marked by "…".
std::string shortened(const std::string& text, std::size_t mostColumns);

/// Rows of cells below a row of titles. A line feed in a cell goes on below; a column that is empty in all rows is
/// left out, with its title.
class Table {
public:
    struct Column {
        std::string title;
        bool isNumber = false; ///< aligned on the right
    };
    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    /// As many cells as there are columns, of valid UTF-8 that is safe on a terminal.
    void addRow(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }
    std::size_t rows() const { return m_rows.size(); }
    /// Lines that begin with two blanks and have none at their end.
    std::string text() const;

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

} // namespace zeq::text
