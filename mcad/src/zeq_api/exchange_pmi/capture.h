// Captures: saved ways of presenting a model with its annotations. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_pmi/pmi_object.h"
#include "zeq_api/exchange_visualization/camera.h"

namespace zeq {

/// A saved state of presentation: from where the model is seen, where it is cut, and what of it is shown.
class ExcPMICapture : public ExcPMIObject {
public:
    /// Appends to the lists; camera and clipping plane are replaced by new ones.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    bool isCaptureHidden() const { return m_captureHidden; }
    void setCaptureHidden(bool hidden) { m_captureHidden = hidden; }

    /// Whether this is how the model is presented at first.
    bool isCurrent() const { return m_current; }
    void setCurrent(bool current) { m_current = current; }

    const std::wstring& hiddenText() const { return m_hiddenText; }
    void setHiddenText(const std::wstring& text) { m_hiddenText = text; }

    /// May be null.
    const std::shared_ptr<ExcCamera>& camera() const { return m_camera; }
    void setCamera(const std::shared_ptr<ExcCamera>& camera) { m_camera = camera; }

    /// May be null. One without flags travels as null, which is not read.
    const std::shared_ptr<ExcClippingPlane>& clippingPlane() const { return m_clippingPlane; }
    void setClippingPlane(const std::shared_ptr<ExcClippingPlane>& plane) { m_clippingPlane = plane; }

    /// Identifiers of shown annotations, of any view of the set. Nothing checks that they are there.
    const std::vector<std::wstring>& annotationIds() const { return m_annotationIds; }
    void addAnnotationId(const std::wstring& id) { m_annotationIds.push_back(id); }

    const std::vector<std::shared_ptr<ExcEntity>>& constructedGeometry() const {
        return m_constructedGeometry;
    }
    /// Null is refused with a warning.
    void addConstructedGeometry(const std::shared_ptr<ExcEntity>& entity);

    /// The bodies that are shown.
    const std::vector<std::shared_ptr<ExcEntity>>& bodies() const { return m_bodies; }
    /// Null is refused with a warning.
    void addBody(const std::shared_ptr<ExcEntity>& body);

    /// Whether the capture says what is shown and what is hidden.
    bool manageHideShow() const { return m_manageHideShow; }
    void setManageHideShow(bool manages) { m_manageHideShow = manages; }

private:
    struct JsonForm;

    bool m_captureHidden = false;
    bool m_current = false;
    std::wstring m_hiddenText;
    std::shared_ptr<ExcCamera> m_camera;
    std::shared_ptr<ExcClippingPlane> m_clippingPlane;
    std::vector<std::wstring> m_annotationIds;
    std::vector<std::shared_ptr<ExcEntity>> m_constructedGeometry;
    std::vector<std::shared_ptr<ExcEntity>> m_bodies;
    bool m_manageHideShow = false;
};
using ExcPMICapturePtr = std::shared_ptr<ExcPMICapture>;

} // namespace zeq
