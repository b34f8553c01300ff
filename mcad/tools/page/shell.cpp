// The assembler takes the file in as it is.
#include "page/page.h"

#ifdef ZEQ_VIEWER
asm(".pushsection .rodata\n"
    ".global zeq_viewer, zeq_viewer_end\n"
    ".hidden zeq_viewer, zeq_viewer_end\n"
    "zeq_viewer: .incbin \"" ZEQ_VIEWER "\"\n"
    "zeq_viewer_end: .byte 0\n"
    ".popsection");
extern "C" const char zeq_viewer[], zeq_viewer_end[];
#endif

namespace zeq::page {

std::string_view shell() {
#ifdef ZEQ_VIEWER
    return {zeq_viewer, zeq_viewer_end};
#else
    return {};
#endif
}

} // namespace zeq::page
