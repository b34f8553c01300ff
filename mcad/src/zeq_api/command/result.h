// The translator's answer to a command. Objects are used by one thread at a time.
#pragma once

#include <string>

#include "mp/serializable.h"
#include "zeq_api/json/enum_names.h"

namespace zeq {

/// What became of a command.
class Result : public mp::ISerializable {
public:
    enum class ECode {
        unknown,
        ok,
        warning, ///< done; the message tells of a problem
        error,   ///< failed; the message says why
        interrupted
    };

    /// @throws std::runtime_error if the document cannot be written; then nothing has been
    void writeObject(mp::OutputStream& stream) const override;
    /// @throws std::invalid_argument if the stream is not one JSON object with a result code; then nothing
    /// has
    ///         changed
    void readObject(mp::InputStream& stream) override;

    ECode code() const { return m_code; }
    void setCode(ECode code) { m_code = code; }

    /// For the user; may be empty.
    const std::wstring& message() const { return m_message; }
    void setMessage(const std::wstring& message) { m_message = message; }

    bool isFinished() const { return m_finished; }
    void setFinished(bool finished) { m_finished = finished; }

private:
    struct JsonForm;

    ECode m_code = ECode::unknown;
    std::wstring m_message;
    bool m_finished = false;
};
const EnumTable& enumTable(Result::ECode);

} // namespace zeq
