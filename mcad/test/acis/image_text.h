// Images as text, a record a line: `plane-surface $-1 -1 $-1 (0,0,0) <0,0,1> <1,0,0> F T T T T #`.
//
//   $5 pointer   7 integer   7.0 real   T F logicals   @text string   'a|b literal "a b"   %2 enumeration
//   (x,y,z) position   <x,y,z> direction   [u,v] parameter pair   { } subtype   &name name   # end of the
//   record
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "acis/memory_file.h"

namespace zeq::test {

/// How the records of an image are packed.
struct ImageFrame {
    long version = 700;
    long top = 1;
    long count = 0; ///< in the header; 0: not told
    bool wide = false;
};

class ImageAssembler {
public:
    static std::string assemble(const std::vector<std::string>& records, const ImageFrame& frame) {
        ImageAssembler assembler(frame.wide);
        assembler.m_bytes = frame.wide ? "ACIS BinaryFile8" : "ACIS BinaryFile";
        for (const long value : {frame.version, frame.count, frame.top, 0L}) assembler.integer(value);
        for (const char* text : {"@Other", "@Kernel", "@Today", "1.0", "1e-06.", "1e-10."})
            assembler.token(text);
        for (const std::string& record : records) assembler.record(record);
        assembler.names("End-of-ACIS-data");
        return assembler.m_bytes;
    }

    /// The records of an image, and its version in `version`.
    static std::vector<std::string> dump(const std::string& bytes, long& version) {
        MemoryFile file(bytes);
        std::vector<std::string> lines;
        const outcome result =
            api_image_as_text(&file, [&lines](std::string_view line) { lines.emplace_back(line); });
        if (!result.ok() || lines.size() < 3) throw std::runtime_error(message(result));
        std::sscanf(lines[0].c_str(), "version %ld", &version);
        lines.pop_back();
        lines.erase(lines.begin(), lines.begin() + 2);
        for (std::string& line : lines) line = tidy(line);
        return lines;
    }

private:
    explicit ImageAssembler(bool wide) : m_wide(wide) {}

    template <class T>
    void raw(T value) {
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof(T));
    }
    void integer(long value) { m_wide ? raw(std::int64_t(value)) : raw(std::int32_t(value)); }
    void text(char tag, std::string_view content, bool longLength = false) {
        m_bytes += tag;
        longLength ? raw(std::uint32_t(content.size())) : raw(std::uint8_t(content.size()));
        m_bytes += content;
    }
    void names(std::string_view chain) {
        for (std::size_t end; (end = chain.find('-')) != std::string_view::npos; chain.remove_prefix(end + 1))
            text(14, chain.substr(0, end));
        text(13, chain);
    }
    void reals(char tag, std::string content) {
        m_bytes += tag;
        for (char& c : content)
            if (std::strchr("()<>[],", c)) c = ' ';
        std::istringstream stream(content);
        for (double value; stream >> value;) raw(value);
    }
    void token(const std::string& word) {
        const std::string rest = word.substr(1);
        switch (word[0]) {
        case '$':
            m_bytes += 12, integer(std::stol(rest));
            break;
        case '%':
            m_bytes += 21, integer(std::stol(rest));
            break;
        case '@':
            text(7, rest);
            break;
        case '&':
            text(13, rest);
            break;
        case '\'':
            text(18, blanks(rest, '|', ' '), true);
            break;
        case '(':
            reals(19, word);
            break;
        case '<':
            reals(20, word);
            break;
        case '[':
            reals(22, word);
            break;
        case 'T':
            m_bytes += 10;
            break;
        case 'F':
            m_bytes += 11;
            break;
        case '{':
            m_bytes += 15;
            break;
        case '}':
            m_bytes += 16;
            break;
        case '#':
            m_bytes += 17;
            break;
        default:
            if (word.find('.') != std::string::npos)
                m_bytes += 6, raw(std::stod(word));
            else
                m_bytes += 4, integer(std::stol(word));
        }
    }
    void record(const std::string& line) {
        std::istringstream stream(line);
        std::string word;
        stream >> word;
        names(word);
        while (stream >> word) token(word);
    }

    /// Without the index and the quotation marks, and with no blank in a token.
    static std::string tidy(const std::string& line) {
        std::string record;
        char quote = 0;
        for (const char c : line.substr(line.find(' ') + 1)) {
            if (quote ? c == quote : c == '"' || c == '\'') {
                if (!quote) record += c == '"' ? '@' : '\'';
                quote = quote ? 0 : c;
            } else {
                record += quote && c == ' ' ? '|' : c;
            }
        }
        return record;
    }
    static std::string blanks(std::string text, char from, char to) {
        for (char& c : text)
            if (c == from) c = to;
        return text;
    }

    bool m_wide;
    std::string m_bytes;
};

} // namespace zeq::test
