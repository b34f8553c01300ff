// The numbers by which faces and edges are known.
#pragma once

#include <NCollection_DataMap.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>
#include <TopoDS_Shape.hxx>

namespace zeq::convexor {

/// What a face or an edge is in the file.
struct Origin {
    int number;       ///< of its instance in a STEP file, of its directory entry in an IGES file
    const char* type; ///< of the entity, as the kernel's class is called: "StepShape_AdvancedFace"
};

/// What the faces and edges of a model are in its file, wherever they are placed.
class Origins {
public:
    /// The first origin that is told of a shape counts.
    void add(const TopoDS_Shape& shape, const Origin& origin) {
        if (!find(shape)) m_origins.Bind(shape.TShape(), origin);
    }
    /// Null for what the file does not have by itself.
    const Origin* find(const TopoDS_Shape& shape) const { return m_origins.Seek(shape.TShape()); }

    /// The largest number of anything in the file.
    int largest() const { return m_largest; }
    void setLargest(int number) { m_largest = number; }

private:
    NCollection_DataMap<Handle(TopoDS_TShape), Origin> m_origins;
    int m_largest = 0;
};

/// The numbers that the faces and edges of a part have for the host.
class Numbering {
public:
    Numbering() = default;
    /// Each face and edge gets the number that it has in the file. One that has none there, or whose number
    /// another one of the part has already, gets the next above all numbers of the file, faces first.
    explicit Numbering(const TopoDS_Shape& part, const Origins& origins = {});

    /// The numbers on a changed copy of the part.
    /// @param copyOf gives what became of a face or an edge: a shape that holds such ones
    template <class CopyOf>
    Numbering onCopy(const CopyOf& copyOf) const;

    /// Calls `visit(shape, number)` for every face and edge.
    template <class Visit>
    void forEach(const Visit& visit) const {
        for (TopTools_DataMapOfShapeInteger::Iterator each(m_numbers); each.More(); each.Next())
            visit(each.Key(), each.Value());
    }

    /// 0 for what has none.
    int of(const TopoDS_Shape& shape) const;

private:
    void bindParts(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, int number);

    TopTools_DataMapOfShapeInteger m_numbers;
};

template <class CopyOf>
Numbering Numbering::onCopy(const CopyOf& copyOf) const {
    Numbering result;
    forEach([&](const TopoDS_Shape& shape, int number) {
        result.bindParts(copyOf(shape), shape.ShapeType(), number);
    });
    return result;
}

} // namespace zeq::convexor
