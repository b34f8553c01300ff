/// @file
/// The one header through which the library and the programs see the modelling kernel. It gives the bundled
/// kernel, or, with ZEQ_EXTERNAL_ACIS (CMake: -DZEQ_ACIS_DIR=DIR), another one through a header `zeq_acis.h`
/// in that directory. That header has to provide, globally and with the meaning they have in the headers
/// below: ENTITY, ENTITY_LIST, restore_def and subtype_table, ATTRIB with its owner actions, METHOD_ID,
/// METHOD_ARGS and METHOD_TABLE, the classes of topology.h and geometry.h, BinaryFile, FileInfo, the read_*
/// and write_* functions, outcome, api_block and the api_* functions.
#pragma once

#ifdef ZEQ_EXTERNAL_ACIS
#include <zeq_acis.h>
#else
#include "platform/acis/api.h"
#include "platform/acis/attrib.h"
#include "platform/acis/entity.h"
#include "platform/acis/file.h"
#include "platform/acis/geometry.h"
#include "platform/acis/nurbs.h"
#include "platform/acis/position.h"
#include "platform/acis/topology.h"
#endif
