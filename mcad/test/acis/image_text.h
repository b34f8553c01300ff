// Images as text, a record a line: `plane-surface $-1 -1 $-1 (0,0,0) <0,0,1> <1,0,0> F T T T T #`.
//
//   $5 pointer   7 integer   7.0 real   T F logicals   @text string   'a|b literal "a b"   %2 enumeration
//   (x,y,z) position   <x,y,z> direction   [u,v] parameter pair   { } subtype   &name name   # end of the
//   record
#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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
        ImageAssembler reader(bytes.compare(0, 16, "ACIS BinaryFile8") == 0);
        reader.m_bytes = bytes;
        reader.m_at = reader.m_wide ? 16 : 15;
        version = reader.readInteger();
        for (int i = 0; i < 3; ++i) reader.readInteger();
        for (int i = 0; i < 6; ++i) reader.readToken();
        std::vector<std::string> records;
        for (std::string record; reader.m_at < bytes.size();) {
            const std::string token = reader.readToken();
            record += token;
            if (token == "&data" && record == "~End~of~ACIS&data") break;
            if (token[0] != '~') record += ' ';
            if (token != "#") continue;
            records.push_back(tidy(record));
            record.clear();
        }
        return records;
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

    template <class T>
    T read() {
        T value;
        if (m_bytes.size() - m_at < sizeof(T)) throw std::runtime_error("the image ends");
        std::memcpy(&value, m_bytes.data() + m_at, sizeof(T));
        m_at += sizeof(T);
        return value;
    }
    long readInteger() { return m_wide ? read<std::int64_t>() : read<std::int32_t>(); }
    std::string readText(std::size_t length) {
        m_at += length;
        return m_bytes.substr(m_at - length, length);
    }
    std::string readReals(int count, char open, char close) {
        std::string result(1, open);
        for (int i = 0; i < count; ++i) result += (i ? "," : "") + number(read<double>());
        return result + close;
    }
    std::string readToken() {
        switch (const int tag = read<std::uint8_t>()) {
        case 4:
            return std::to_string(readInteger());
        case 6: {
            const std::string value = number(read<double>());
            return value.find('.') == std::string::npos ? value + ".0" : value;
        }
        case 7:
            return "@" + readText(read<std::uint8_t>());
        case 10:
            return "T";
        case 11:
            return "F";
        case 12:
            return "$" + std::to_string(readInteger());
        case 13:
            return "&" + readText(read<std::uint8_t>());
        case 14:
            return "~" + readText(read<std::uint8_t>());
        case 15:
            return "{";
        case 16:
            return "}";
        case 17:
            return "#";
        case 18:
            return "'" + blanks(readText(read<std::uint32_t>()), ' ', '|');
        case 19:
            return readReals(3, '(', ')');
        case 20:
            return readReals(3, '<', '>');
        case 21:
            return "%" + std::to_string(readInteger());
        case 22:
            return readReals(2, '[', ']');
        default:
            throw std::runtime_error("tag " + std::to_string(tag));
        }
    }
    /// "~cone&surface ..." as "cone-surface ...".
    static std::string tidy(std::string record) {
        const std::size_t end = record.find(' ');
        record.pop_back();
        for (std::size_t i = 0; i < end; ++i)
            if (record[i] == '~' || record[i] == '&') record[i] = '-';
        return record.substr(1);
    }
    static std::string number(double value) {
        char text[32];
        return {text, std::to_chars(text, text + sizeof(text), value).ptr};
    }
    static std::string blanks(std::string text, char from, char to) {
        for (char& c : text)
            if (c == from) c = to;
        return text;
    }

    bool m_wide;
    std::string m_bytes;
    std::size_t m_at = 0;
};

} // namespace zeq::test
