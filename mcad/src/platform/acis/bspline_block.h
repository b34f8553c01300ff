// The block of a record that holds a B-spline curve or surface.
#pragma once

#include "platform/acis/nurbs.h"
#include "platform/acis/record_stream.h"
#include <memory>
#include <string>
#include <string_view>

namespace acis_detail {
/// A null spline stands for a block of unknown kind, all of whose tokens are `rest`.
template <class Spline>
void write_bspline(record_writer& writer, ENTITY_LIST& list, const char* name, const Spline* spline,
                   double tolerance, const std::unique_ptr<unknown_tokens>& rest);
/// False if the block is of unknown kind; then all its tokens are in `rest`. Otherwise it gets only what does
/// not concern the B-spline, and nothing if that is as this kernel writes it.
template <class Spline>
bool read_bspline(record_reader& reader, const char* name, Spline& spline, double& tolerance,
                  std::unique_ptr<unknown_tokens>& rest);

std::string text_of(const SPAtransf& transform);
/// False if there are not 13 numbers in it.
bool take_text(std::string_view text, SPAtransf& transform);
} // namespace acis_detail
