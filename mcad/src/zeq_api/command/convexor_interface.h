// The generation of the protocol that two processes speak. Any thread may use the names.
#pragma once

#include "zeq_api/json/enum_names.h"

namespace zeq {

/// The generation of the protocol; it decides which class of options a command carries.
enum class EConvexorInterface {
    uconnect, ///< the default; carries the same options as `connect`
    connect,  ///< ImportOptions, ExportOptions
    legacy    ///< LegacyImportOptions, LegacyExportOptions
};
const EnumTable& enumTable(EConvexorInterface);

} // namespace zeq
