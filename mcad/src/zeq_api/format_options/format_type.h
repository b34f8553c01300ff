// The two keys of an option group: the operation it belongs to and the format or area it configures. Any
// thread may use the names.
#pragma once

#include "zeq_api/json/enum_names.h"

namespace zeq {

/// The operation that a set of options configures.
enum class EOperationType {
    options, ///< any: a group that belongs to no operation
    import,
    export_
};
const EnumTable& enumTable(EOperationType);

/// The file format, or the area common to all formats, that an option group configures.
enum class EFormatType {
    unknown,
    general,
    CGM,
    ACIS,
    parasolid,
    CatiaV5,
    CatiaV5Drawing,
    CatiaV4,
    IGES,
    STEP,
    STL,
    Creo,
    NX,
    SolidWorks,
    SolidWorksDrawing,
    SolidEdge,
    JT,
    Inventor,
    PDF_3D,
    XML_3D,
    autocad,
    U3D,
    VDA_FS,
    XML_EBOM,
    XCGM,
    graphical,
    mechanical,
    modeler,
    picture,
    IFC,
    EDrawings,
    UDL
};
const EnumTable& enumTable(EFormatType);

} // namespace zeq
