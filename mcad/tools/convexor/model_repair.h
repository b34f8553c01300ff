// Mends files on which the kernel would crash or lose more than is missing, before it translates them.
#pragma once

#include <IGESData_IGESModel.hxx>
#include <Interface_InterfaceModel.hxx>

#include "convexor/reporter.h"

namespace zeq::convexor {

/// Takes off what the file refers to but does not hold, on which the kernel would crash or give up a whole
/// solid: edges off their loops, boundaries off their faces, and faces without any off their shells. Each is
/// an error in the log.
/// @return how many there are
int dropMissing(const Handle(Interface_InterfaceModel) & file, Reporter& reporter);

/// Gives groups an empty name that have none, on which the kernel would crash.
/// @return how many there are
int nameGroups(const Handle(IGESData_IGESModel) & file, Reporter& reporter);

} // namespace zeq::convexor
