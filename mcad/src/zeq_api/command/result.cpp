// The translator's answer to a command.
#include "zeq_api/command/result.h"

#include "zeq_api/json/document_rows.h"

namespace zeq {

const EnumTable& enumTable(Result::ECode) {
    using E = Result::ECode;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::ok, L"ok"},
                                          {E::warning, L"warning"},
                                          {E::error, L"error"},
                                          {E::interrupted, L"interrupted"}};
    static const EnumTable table{"Result::ECode", names};
    return table;
}

struct Result::JsonForm {
    using This = Result;
    static constexpr json::Form form{
        json::Head{"Result", area::untraced,
                   json::throwsInvalid("Result::readObject: invalid json document")},
        detail::exactName(L"code", &This::m_code,
                          detail::refused("Result::readObject: json document has no result code.")),
        json::field(L"message", &This::m_message, json::unlessEmpty),
        json::field(L"is_finished", &This::m_finished),
    };
};

void Result::writeObject(mp::OutputStream& stream) const { detail::writeStream<JsonForm>(*this, stream); }

void Result::readObject(mp::InputStream& stream) { detail::readStream<JsonForm>(*this, stream); }

} // namespace zeq
