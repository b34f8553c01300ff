/// @file
/// Images as text, for people who want to see what is in them.
#pragma once

#include "platform/acis/api.h"
#include <functional>
#include <string_view>

/// Calls with each line of the text: two of the header, then one for each record. That has its index, its
/// name and its fields:
///
///     $5 pointer to record 5   7 integer   7.0 real   T F logicals   "text"   %2 enumeration   (x y z)
///     position <x y z> direction   [u v] parameter pair   { } part   # end of the record
///
/// Every record is written, those of unknown classes included. Where the image is damaged the text ends, and
/// the outcome tells why.
outcome api_image_as_text(BinaryFile* file, const std::function<void(std::string_view line)>& take);
