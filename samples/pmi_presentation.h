// How annotations look in a STEP file (ISO 10303-46 and -242), and the views that they are saved in.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gp_Ax2.hxx>
#include <gp_Pln.hxx>

#include "drawing.h"
#include "export.h"
#include "instances.h"

namespace samples {

class PmiPresentation {
public:
    /// How a drawing is written: with filled triangles, or by lines alone.
    enum class Kind {
        tessellated,
        polylines
    };
    struct Look {
        Kind kind;
        Color color;
    };

    PmiPresentation(Instances& instances, const StepNumbers& file);

    /// Draws on the x and y axes of a plane.
    /// @param meaning the number of what the annotation says as data
    /// @return the number of the annotation
    int annotation(const std::string& name, int meaning, const Drawing& drawing, const gp_Ax2& plane,
                   const Look& look);

    struct Camera {
        gp_Pnt eye, target;
        gp_Dir up;
        double width, height; ///< of the window around the target
    };
    /// A view without perspective.
    void view(const std::string& name, const Camera& camera, const std::vector<int>& annotations,
              const std::optional<gp_Pln>& section);

    /// Ties annotations and views to the part; last.
    void finish();

private:
    struct Annotation {
        int callout;
        int plane;
        int occurrence;
        int meaning;
    };

    int point(const gp_Pnt& point);
    int placement(const gp_Ax2& axes);
    int style(const Color& color);
    int tessellation(const std::string& name, const Drawing& drawing, const gp_Ax2& plane);
    int curves(const std::string& name, const Drawing& drawing, const gp_Ax2& plane);

    Instances& m_instances;
    const StepNumbers& m_file;
    std::vector<Annotation> m_annotations;
    std::vector<int> m_views; ///< draughting models
};

} // namespace samples
