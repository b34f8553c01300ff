// The buffer of a file and what is said of it, plain or compressed.
#pragma once

#include <string>

#include "gltf/packer.h"
#include "text/json_writer.h"

namespace zeq::gltf {

/// Buffers and views as the file has them.
struct Buffers {
    std::string body; ///< the first buffer
    text::JsonList buffers, views;
};

/// As it is.
Buffers plainBuffers(Packer& packer);

/// With EXT_meshopt_compression: each view on its own, positions without loss, normals with 12 bits a component. The
/// second buffer is what it becomes again.
Buffers compressedBuffers(Packer& packer);

} // namespace zeq::gltf
