// What the translator reports while it works. Objects are used by one thread at a time.
#pragma once

#include <string>
#include <utility>

#include "zeq_api/exchange_object/exchange_object.h"
#include "zeq_api/json/enum_names.h"

namespace zeq {

/// A text on its way to the host.
class ExcMessageBase : public IExchangeObject {
public:
    ExcMessageBase() = default;
    explicit ExcMessageBase(const std::wstring& message) : m_message(message) {}
    explicit ExcMessageBase(const wchar_t* message) : m_message(message) {}

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& get() const { return m_message; }
    void set(const std::wstring& message) { m_message = message; }

private:
    struct JsonForm;

    std::wstring m_message;
};

/// A message for the user.
class ExcMessage : public ExcMessageBase {
public:
    using ExcMessageBase::ExcMessageBase;

    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

private:
    struct JsonForm;
};

/// A line for the host's log.
class ExcLog : public ExcMessageBase {
public:
    using ExcMessageBase::ExcMessageBase;

    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

private:
    struct JsonForm;
};

/// How far the translation has come.
class ExcProgress : public IExchangeObject {
public:
    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

    int progress() const { return m_progress; }
    void setProgress(int progress) { m_progress = progress; }

    /// The progress() that means complete.
    int progressMax() const { return m_progressMax; }
    void setProgressMax(int max) { m_progressMax = max; }

    /// Whether the position means nothing: something is going on, but nobody knows how long.
    bool pulse() const { return m_pulse; }
    void setPulse(bool pulse) { m_pulse = pulse; }

    /// What is being done.
    const std::wstring& stage() const { return m_stage; }
    void setStage(const std::wstring& stage) { m_stage = stage; }

    /// Whether position and stage are the same. // sic pulse() does not count.
    bool operator==(const ExcProgress& other) const;

private:
    struct JsonForm;

    int m_progress = 0;
    int m_progressMax = 100;
    bool m_pulse = false;
    std::wstring m_stage;
};

/// Tells that all data of one stage have been sent.
class ExcStageFinished : public IExchangeObject {
public:
    /// What has been sent.
    enum class EStage {
        unknown,
        product_structure,
        root_visualization, ///< of the root assembly
        visualization,      ///< of the blocks
        root_mechanical,    ///< of the root
        mechanical,         ///< of the blocks
        visu_and_mech       ///< visualization and mechanical data
    };

    ExcStageFinished() = default;
    explicit ExcStageFinished(EStage stage) : m_stage(stage) {}
    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

    EStage stage() const { return m_stage; }
    void setStage(EStage stage) { m_stage = stage; }

private:
    struct JsonForm;

    EStage m_stage = EStage::unknown;
};
const EnumTable& enumTable(ExcStageFinished::EStage);

} // namespace zeq
