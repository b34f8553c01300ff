// The translator's answer to a command.
#include "zeq_api/command/result.h"

#include <gtest/gtest.h>

#include "support/json_text.h"

namespace zeq {
namespace {

using test::readFrom;
using test::refusalOf;
using test::writtenBy;

Result make(Result::ECode code, const std::wstring& message, bool finished) {
    Result result;
    result.setCode(code);
    result.setMessage(message);
    result.setFinished(finished);
    return result;
}

TEST(Result, IsIndentedTextOfWhatWasSet) {
    std::wostringstream stream;
    make(Result::ECode::warning, L"m", true).writeObject(stream);
    EXPECT_EQ(stream.str(),
              L"{\n    \"code\": \"warning\",\n    \"message\": \"m\",\n    \"is_finished\": true\n}");
    EXPECT_EQ(writtenBy(make(static_cast<Result::ECode>(7), L"", false)), writtenBy(Result()));
}

TEST(Result, ARefusedTextChangesNothing) {
    for (const wchar_t* text : {L"", L"code", LR"({"code":"ok")", LR"({"code":"ok"} {})"}) {
        Result result = make(Result::ECode::warning, L"old", true);
        EXPECT_EQ(refusalOf([&] { readFrom(result, text); }), "Result::readObject: invalid json document");
        EXPECT_EQ(writtenBy(result), LR"({"code":"warning","message":"old","is_finished":true})");
    }
}

} // namespace
} // namespace zeq
