// Places many small blocks in numbered groups, each group with a part of its own.
#include "lattice.h"

#include <algorithm>
#include <string>
#include <vector>

#include "parts.h"

namespace samples {

Model makeLattice(const LatticeSize& size) {
    constexpr double pitch = 20;
    const int groups = (size.instances + size.groupSize - 1) / size.groupSize;
    const int parts = size.parts > 0 ? std::min(size.parts, size.instances) : groups;

    Model model;
    std::vector<TDF_Label> cells;
    for (int i = 0; i < parts; ++i) {
        cells.push_back(model.addPart("Cell " + std::to_string(i + 1),
                                      size.faces > 6 ? makePlates(size.faces) : makeBlock(6 + i % 10, 8, 8)));
        model.paint(cells.back(), {25 * (i % 10), 128, 255 - 25 * (i % 10)});
    }
    const TDF_Label lattice = model.addAssembly("Lattice");
    for (int index = 0; index < groups; ++index) {
        const std::string number = std::to_string(index + 1);
        const TDF_Label group = model.addAssembly("Group " + number);
        const int first = index * size.groupSize;
        for (int i = 0; i < std::min(size.groupSize, size.instances - first); ++i) {
            const int row = i / 10;
            const int part = size.parts > 0 ? (first + i) % parts : index;
            const std::string name = "Cell " + std::to_string(part + 1) + "." + std::to_string(first + i + 1);
            model.place(group, cells[static_cast<std::size_t>(part)], name,
                        turnedAbout(gp::DZ(), 90 * (i % 4), gp_Vec((i % 10 + 1) * pitch, row * pitch, 0)));
        }
        model.place(lattice, group, "Group " + number, shifted(0, 0, (index + 1) * pitch));
    }
    return model;
}

} // namespace samples
