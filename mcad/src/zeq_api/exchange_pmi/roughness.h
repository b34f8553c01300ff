// Surface roughness symbols. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_pmi/pmi_object.h"

namespace zeq {

/// A surface roughness symbol.
class ExcPMIRoughness : public ExcPMIAnnotation {
public:
    /// Whether the surface has to be machined.
    enum class EObtentionType {
        unsupported,
        not_defined,
        matching_mandatory,
        matching_forbidden
    };

    enum class EApplicabilityType {
        unsupported,
        specified_surface_only,
        all_part_surfaces,
        basic_surface
    };

    /// Appends to the fields.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EPMIAnnotationType type() const override { return EPMIAnnotationType::roughness; }

    EObtentionType obtentionType() const { return m_obtentionType; }
    void setObtentionType(EObtentionType type) { m_obtentionType = type; }

    EApplicabilityType applicabilityType() const { return m_applicabilityType; }
    void setApplicabilityType(EApplicabilityType type) { m_applicabilityType = type; }

    /// The texts of the symbol's fields in their order.
    const std::vector<std::wstring>& fields() const { return m_fields; }
    void addField(const std::wstring& field) { m_fields.push_back(field); }
    void setFields(const std::vector<std::wstring>& fields) { m_fields = fields; }

private:
    struct JsonForm;

    EObtentionType m_obtentionType = EObtentionType::unsupported;
    EApplicabilityType m_applicabilityType = EApplicabilityType::unsupported;
    std::vector<std::wstring> m_fields;
};
const EnumTable& enumTable(ExcPMIRoughness::EObtentionType);
const EnumTable& enumTable(ExcPMIRoughness::EApplicabilityType);
using ExcPMIRoughnessPtr = std::shared_ptr<ExcPMIRoughness>;

} // namespace zeq
