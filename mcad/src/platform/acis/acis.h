/// @file
/// The one header through which the library and the programs see the modelling kernel. It gives the bundled
/// kernel, or, with ZEQ_EXTERNAL_ACIS (CMake: -DZEQ_ACIS_DIR=DIR), another one through a header `zeq_acis.h`
/// in that directory. That header has to provide, globally and with the same meaning, what the headers below
/// declare; docs/geometry.md lists it.
#pragma once

#ifdef ZEQ_EXTERNAL_ACIS
#include <zeq_acis.h>
#else
#include "platform/acis/api.h"
#include "platform/acis/attrib.h"
#include "platform/acis/entity.h"
#include "platform/acis/file.h"
#include "platform/acis/geometry.h"
#include "platform/acis/image_text.h"
#include "platform/acis/nurbs.h"
#include "platform/acis/position.h"
#include "platform/acis/topology.h"
#endif
