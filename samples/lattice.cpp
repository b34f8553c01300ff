// Places many small blocks in numbered groups, each group with a part of its own.
#include "lattice.h"

#include <algorithm>
#include <string>

#include "parts.h"

namespace samples {

Model makeLattice(int instances) {
    constexpr int groupSize = 100;
    constexpr double pitch = 20;

    Model model;
    const TDF_Label lattice = model.addAssembly("Lattice");
    for (int placed = 0; placed < instances; placed += groupSize) {
        const int index = placed / groupSize;
        const std::string number = std::to_string(index + 1);
        // A part in each group: readers take long for one part that is shared by very many instances.
        const TDF_Label cell = model.addPart("Cell " + number, makeBlock(6 + index % 10, 8, 8));
        model.paint(cell, {25 * (index % 10), 128, 255 - 25 * (index % 10)});

        const TDF_Label group = model.addAssembly("Group " + number);
        for (int i = 0; i < std::min(groupSize, instances - placed); ++i) {
            const int row = i / 10;
            model.place(group, cell, "Cell " + number + "." + std::to_string(i + 1),
                        turnedAbout(gp::DZ(), 90 * (i % 4), gp_Vec((i % 10 + 1) * pitch, row * pitch, 0)));
        }
        model.place(lattice, group, "Group " + number, shifted(0, 0, (index + 1) * pitch));
    }
    return model;
}

} // namespace samples
