// The ways in and out of objects, and the comparison with what a case expects.
#include "support/case_runner.h"

#include <exception>
#include <set>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

#include "support/case_lines.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"

namespace zeq::test {

namespace {

class OverDocument : public CaseSubject {
public:
    explicit OverDocument(std::unique_ptr<IJsonObject> object) : m_object(std::move(object)) {}
    void read(const JsonValue& document) override { m_object->readObject(document); }
    void write(JsonDocument& document) const override {
        m_object->writeObject(document, document.GetAllocator());
    }

private:
    std::unique_ptr<IJsonObject> m_object;
};

class OverBytes : public CaseSubject {
public:
    explicit OverBytes(std::unique_ptr<IJsonObject> object) : m_object(std::move(object)) {}
    void read(const JsonValue& document) override {
        std::string bytes;
        JsonBinaryIO::encode(document, bytes);
        json::readNested(*m_object, json::ByteView(bytes.data()));
    }
    void write(JsonDocument& document) const override {
        std::string bytes;
        json::ByteSink sink(bytes);
        json::writeNested(*m_object, sink);
        EXPECT_EQ(JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator()),
                  bytes.size());
    }

private:
    std::unique_ptr<IJsonObject> m_object;
};

class OverText : public CaseSubject {
public:
    explicit OverText(std::unique_ptr<mp::ISerializable> object) : m_object(std::move(object)) {}
    void read(const JsonValue& document) override { readFrom(*m_object, textOf(document)); }
    void write(JsonDocument& document) const override {
        std::wistringstream stream(writtenBy(*m_object));
        document = parse(stream);
    }

private:
    std::unique_ptr<mp::ISerializable> m_object;
};

/// One line of a case file.
class Case {
public:
    explicit Case(const JsonValue& line) : m_line(line) {
        static const std::set<std::wstring> known{L"case",    L"class",  L"before", L"read",
                                                  L"written", L"throws", L"log",    L"log_level"};
        for (const auto& member : line.GetObject())
            if (!known.contains(member.name.GetString()))
                ADD_FAILURE() << "unknown key " << testing::PrintToString(member.name.GetString());
    }

    const JsonValue* find(const wchar_t* key) const {
        const auto member = m_line.FindMember(key);
        return member == m_line.MemberEnd() ? nullptr : &member->value;
    }
    std::string text(const wchar_t* key) const {
        const JsonValue* value = find(key);
        return value ? narrow(*value) : std::string();
    }

    void run(CaseSubject& subject, LogCapture& log) const;

private:
    static std::string narrow(const JsonValue& text) {
        const std::wstring wide = text.GetString();
        return {wide.begin(), wide.end()};
    }
    std::vector<LogLine> expectedLog() const;
    std::vector<LogLine> loggedLines(LogCapture& log) const;

    const JsonValue& m_line;
};

std::vector<LogLine> Case::expectedLog() const {
    std::vector<LogLine> lines;
    if (const JsonValue* log = find(L"log"))
        for (const JsonValue& line : log->GetArray()) lines.push_back({line[0].GetInt(), narrow(line[1])});
    return lines;
}

std::vector<LogLine> Case::loggedLines(LogCapture& log) const {
    const JsonValue* level = find(L"log_level");
    std::vector<LogLine> lines = log.take();
    std::erase_if(lines,
                  [most = level ? level->GetInt() : 3](const auto& line) { return line.level > most; });
    return lines;
}

void Case::run(CaseSubject& subject, LogCapture& log) const {
    if (const JsonValue* before = find(L"before")) subject.read(*before);
    log.take();
    std::string thrown;
    try {
        if (const JsonValue* document = find(L"read")) subject.read(*document);
    } catch (const std::exception& error) {
        thrown = error.what();
    }
    EXPECT_EQ(thrown, text(L"throws"));
    EXPECT_EQ(loggedLines(log), expectedLog());

    const JsonValue* expected = find(L"written");
    if (!expected) expected = find(L"read");
    if (!expected) throw std::logic_error("a case without \"read\" and \"written\"");
    JsonDocument written;
    subject.write(written);
    EXPECT_EQ(testing::PrintToString(textOf(written)), testing::PrintToString(textOf(*expected)));
}

} // namespace

CaseRunner::Subject CaseRunner::overDocument(std::unique_ptr<IJsonObject> object) {
    return std::make_unique<OverDocument>(std::move(object));
}

CaseRunner::Subject CaseRunner::overBytes(std::unique_ptr<IJsonObject> object) {
    return std::make_unique<OverBytes>(std::move(object));
}

CaseRunner::Subject CaseRunner::overText(std::unique_ptr<mp::ISerializable> object) {
    return std::make_unique<OverText>(std::move(object));
}

void CaseRunner::run(const std::string& fileName) const {
    LogCapture log;
    std::set<std::string> unused;
    for (const auto& [className, ways] : m_subjects) unused.insert(className);
    forEachLine(fileName, [&](int number, const JsonValue& line) {
        SCOPED_TRACE(fileName + ":" + std::to_string(number));
        const Case row(line);
        SCOPED_TRACE(row.text(L"case"));
        const auto subjects = m_subjects.find(row.text(L"class"));
        if (subjects == m_subjects.end()) {
            ADD_FAILURE() << "the class was not added";
            return;
        }
        unused.erase(subjects->first);
        for (std::size_t way = 0; way < subjects->second.size(); ++way) {
            SCOPED_TRACE(way == 0 ? "as a document" : "as bytes");
            try {
                row.run(*subjects->second[way](), log);
            } catch (const std::exception& error) {
                ADD_FAILURE() << "exception outside of reading: " << error.what();
            }
        }
    });
    EXPECT_EQ(unused, std::set<std::string>()) << "classes without a case in " << fileName;
}

} // namespace zeq::test
