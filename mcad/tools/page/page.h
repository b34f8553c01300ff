// A page that shows a model in a browser, from one file and without any other.
#pragma once

#include <functional>
#include <string_view>

namespace zeq::page {

/// The page without a model: one HTML text with the line `<!-- model -->` where the model goes. Empty in programs that
/// were built without it.
std::string_view shell();

/// Takes the next piece of a text.
using Sink = std::function<void(std::string_view)>;

/// Writes a page with a model in it: in place of that line two elements `<script type="text/plain">`, `model` with the
/// file and `facts` with the document, each compressed by gzip, as Base64. So nothing of them can be taken for HTML.
///
/// @param shell as above
/// @param glb   binary glTF
/// @param facts what the page tells beyond it, a JSON document in UTF-8 (docs/display.md)
/// @throws std::invalid_argument unless that line stands in the shell once
void write(std::string_view shell, std::string_view glb, std::string_view facts, const Sink& sink);

} // namespace zeq::page
