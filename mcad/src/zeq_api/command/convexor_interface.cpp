// Names of the protocol generations.
#include "zeq_api/command/convexor_interface.h"

namespace zeq {

const EnumTable& enumTable(EConvexorInterface) {
    using E = EConvexorInterface;
    static constexpr EnumEntry names[] = {
        {E::uconnect, L"uconnect"}, {E::connect, L"connect"}, {E::legacy, L"legacy"}};
    static const EnumTable table{"EConvexorInterface", names};
    return table;
}

} // namespace zeq
