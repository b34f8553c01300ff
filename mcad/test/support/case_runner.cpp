// The ways in and out of objects, and the comparison with what a case expects.
#include "support/case_runner.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <set>
#include <stdexcept>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "mp/serializable.h"
#include "mv_cvx/held_log.h"
#include "support/binary_form.h"
#include "support/case_lines.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"

namespace zeq::test {

namespace {

class OverDocument : public CaseSubject {
public:
    explicit OverDocument(std::shared_ptr<IJsonObject> object) : m_object(std::move(object)) {}
    void read(const JsonValue& document) override { m_object->readObject(document); }
    void write(JsonDocument& document) const override {
        m_object->writeObject(document, document.GetAllocator());
    }

private:
    std::shared_ptr<IJsonObject> m_object;
};

class OverBytes : public CaseSubject {
public:
    explicit OverBytes(const json::FormInfo& form) : m_make(form.make), m_object(std::get<0>(form.make())) {}
    void read(const JsonValue& document) override {
        std::string bytes;
        JsonBinaryIO::encode(document, bytes);
        if (isInOnePass(bytes))
            EXPECT_TRUE(readDirectly(*m_object, bytes, 64));
        else
            m_object->readObject(document);
        m_read.emplace_back().CopyFrom(document, m_read.back().GetAllocator());
    }
    void write(JsonDocument& document) const override {
        const std::string bytes = binaryForm(*m_object);
        EXPECT_EQ(JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator()),
                  bytes.size());
    }

private:
    bool isInOnePass(const std::string& bytes) const {
        const mv_cvx::HeldLog dropped;
        try {
            const auto object = std::get<0>(m_make());
            for (const JsonDocument& document : m_read) object->readObject(document);
            return readDirectly(*object, bytes);
        } catch (const std::exception&) { // for a member that may only stand elsewhere
            return false;
        }
    }

    json::MadeObject (*m_make)();
    std::shared_ptr<IJsonObject> m_object;
    std::vector<JsonDocument> m_read;
};

class OverText : public CaseSubject {
public:
    explicit OverText(std::shared_ptr<mp::ISerializable> object) : m_object(std::move(object)) {}
    void read(const JsonValue& document) override { readFrom(*m_object, textOf(document)); }
    void write(JsonDocument& document) const override {
        std::wistringstream stream(writtenBy(*m_object));
        document = parse(stream);
    }

private:
    std::shared_ptr<mp::ISerializable> m_object;
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

/// A new object on each of its ways.
std::vector<std::unique_ptr<CaseSubject>> subjectsOf(const json::FormInfo& form) {
    std::vector<std::unique_ptr<CaseSubject>> subjects;
    if (form.isWholeDocument) {
        subjects.push_back(std::make_unique<OverText>(std::get<1>(form.make())));
    } else {
        subjects.push_back(std::make_unique<OverDocument>(std::get<0>(form.make())));
        subjects.push_back(std::make_unique<OverBytes>(form));
    }
    return subjects;
}

} // namespace

void runCases(const std::string& fileName) {
    LogCapture log;
    const std::vector<const json::FormInfo*> forms = json::allForms();
    forEachLine(fileName, [&](int number, const JsonValue& line) {
        SCOPED_TRACE(fileName + ":" + std::to_string(number));
        const Case row(line);
        SCOPED_TRACE(row.text(L"case"));
        const auto form = std::ranges::find(forms, row.text(L"class"), &json::FormInfo::className);
        if (form == forms.end() || !(*form)->make) {
            ADD_FAILURE() << "there is no class '" << row.text(L"class") << "', or it is abstract";
            return;
        }
        for (const auto& subject : subjectsOf(**form)) {
            const CaseSubject& way = *subject;
            SCOPED_TRACE(typeid(way).name());
            try {
                row.run(*subject, log);
            } catch (const std::exception& error) {
                ADD_FAILURE() << "exception outside of reading: " << error.what();
            }
        }
    });
}

} // namespace zeq::test
