// Hands out numbers, first those of the file.
#include "convexor/numbering.h"

#include <unordered_set>
#include <vector>

#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

namespace zeq::convexor {

Numbering::Numbering(const TopoDS_Shape& part, const Origins& origins) {
    std::unordered_set<int> taken;
    std::vector<TopoDS_Shape> others;
    for (const TopAbs_ShapeEnum kind : {TopAbs_FACE, TopAbs_EDGE}) {
        TopTools_IndexedMapOfShape shapes;
        TopExp::MapShapes(part, kind, shapes);
        for (int i = 1; i <= shapes.Extent(); ++i) {
            const TopoDS_Shape& shape = shapes(i);
            const Origin* const origin = origins.find(shape);
            if (origin && taken.insert(origin->number).second)
                m_numbers.Bind(shape, origin->number);
            else
                others.push_back(shape);
        }
    }
    int number = origins.largest();
    for (const TopoDS_Shape& shape : others) m_numbers.Bind(shape, ++number);
}

int Numbering::of(const TopoDS_Shape& shape) const {
    const int* const number = m_numbers.Seek(shape);
    return number ? *number : 0;
}

void Numbering::bindParts(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, int number) {
    for (TopExp_Explorer each(shape, kind); each.More(); each.Next()) m_numbers.Bind(each.Current(), number);
}

} // namespace zeq::convexor
