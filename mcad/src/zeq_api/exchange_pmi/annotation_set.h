// The PMI of blocks: sets of annotation views and captures. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_pmi/annotation_view.h"
#include "zeq_api/exchange_pmi/capture.h"

namespace zeq {

/// What is annotated on one block under one drafting standard. The add functions refuse null with a warning.
class ExcPMIAnnotationSet : public IJsonObject {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// The block that is annotated.
    unsigned long long blockId() const { return m_blockId; }
    void setBlockId(unsigned long long id) { m_blockId = id; }

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    /// The name of the drafting standard. // sic
    const std::wstring& standart() const { return m_standart; }
    void setStandart(const std::wstring& name) { m_standart = name; }

    const std::vector<ExcPMIAnnotationViewPtr>& views() const { return m_annotationViews; }
    void addView(const ExcPMIAnnotationViewPtr& view);

    const std::vector<ExcPMICapturePtr>& captures() const { return m_captures; }
    void addCapture(const ExcPMICapturePtr& capture);

    const std::vector<std::shared_ptr<ExcEntity>>& constructedGeometry() const {
        return m_constructedGeometry;
    }
    void addConstructedGeometry(const std::shared_ptr<ExcEntity>& entity);

private:
    struct JsonForm;

    unsigned long long m_blockId = 0;
    std::wstring m_name;
    bool m_hidden = false;
    std::wstring m_standart;
    std::vector<ExcPMIAnnotationViewPtr> m_annotationViews;
    std::vector<ExcPMICapturePtr> m_captures;
    std::vector<std::shared_ptr<ExcEntity>> m_constructedGeometry;
};
using ExcPMIAnnotationSetPtr = std::shared_ptr<ExcPMIAnnotationSet>;

/// All annotation sets of a product. Its JSON form is an array of them.
class ExcPMIData : public IJsonObject {
public:
    /// Appends a set for each element, whatever its JSON type.
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::vector<ExcPMIAnnotationSetPtr>& annotationSets() const { return m_annotationSets; }
    /// Null is refused with a warning.
    void addAnnotationSet(const ExcPMIAnnotationSetPtr& set);

private:
    struct JsonForm;

    std::vector<ExcPMIAnnotationSetPtr> m_annotationSets;
};
using ExcPMIDataPtr = std::shared_ptr<ExcPMIData>;

} // namespace zeq
