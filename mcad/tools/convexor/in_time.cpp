// What was given up, and how soon.
#include "convexor/in_time.h"

#include <atomic>

#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

namespace zeq::convexor {

namespace {

std::atomic<bool> givenUp = false;

}

std::chrono::milliseconds timeFor(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    return std::chrono::seconds(30) + std::chrono::milliseconds(50) * faces.Extent();
}

bool isAnythingGivenUp() { return givenUp; }
void noteGivenUp() { givenUp = true; }

} // namespace zeq::convexor
