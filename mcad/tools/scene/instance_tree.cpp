// A depth-first walk with a stack of its own.
#include "scene/instance_tree.h"

#include <algorithm>

#include "scene/build.h"
#include "scene/part_builder.h"
#include "text/text.h"

namespace zeq::scene {

namespace {

struct Level {
    const std::vector<ExcBlockReferencePtr>* references;
    std::size_t next;
    std::uint32_t instance;
};

class InstanceTree {
public:
    InstanceTree(const ExcProductStructure& structure, const PartOfBlock& parts, Scene& scene,
                 Warnings& warnings)
        : m_structure(structure), m_parts(parts), m_scene(scene), m_warnings(warnings),
          m_isOpen(scene.parts.size()) {}

    void grow() {
        std::vector<Level> path{{&m_structure.rootBlockReferences(), 0, 0}};
        while (!path.empty()) {
            Level& level = path.back();
            if (level.next == level.references->size()) {
                m_isOpen[m_scene.instances[level.instance].part] = false;
                path.pop_back();
                continue;
            }
            if (m_scene.instances.size() >= mostInstances)
                return m_warnings.add("the structure has more than " + std::to_string(mostInstances) +
                                      " instances; the others are left out");
            const ExcBlockReference& reference = *(*level.references)[level.next++];
            const auto part = m_parts.find(reference.blockId());
            if (part == m_parts.end()) {
                leaveOut(reference, level.instance, "is missing");
            } else if (m_isOpen[part->second]) {
                leaveOut(reference, level.instance, "contains itself");
            } else if (const Placement local = Placement::of(reference.transformation()); !local.isUsable()) {
                leaveOut(reference, level.instance, "is placed by no sound transformation");
            } else {
                add(reference, part->second, level.instance, local);
                const ExcBlockPtr block = m_structure.getBlockById(reference.blockId());
                m_isOpen[part->second] = true;
                path.push_back(
                    {&block->blockReferences(), 0, static_cast<std::uint32_t>(m_scene.instances.size() - 1)});
            }
        }
    }

private:
    void leaveOut(const ExcBlockReference& reference, std::uint32_t parent, const char* why) {
        const std::string& around = m_scene.parts[m_scene.instances[parent].part].name;
        m_warnings.add("instance '" + text::printable(reference.name()) + "' in '" + text::printable(around) +
                       "' is left out: block " + std::to_string(reference.blockId()) + " " + why);
    }

    void add(const ExcBlockReference& reference, std::uint32_t part, std::uint32_t parent,
             const Placement& local) {
        Instance instance;
        const Instance& around = m_scene.instances[parent];
        const bool isOnly = parent == 0 && m_structure.isPart(); // its name says no more than that
        if (!isOnly) instance.name = text::validUtf8(reference.name());
        if (instance.name.empty()) instance.name = m_scene.parts[part].name;
        instance.id =
            text::validUtf8(reference.persistentId().empty() ? reference.guid() : reference.persistentId());
        instance.parent = parent;
        instance.part = part;
        instance.local = local;
        instance.world = around.world * local;
        instance.look = lookOf(reference.color()).within(around.look);
        instance.isHidden = around.isHidden || reference.isHidden() || reference.isSuppressed();
        appendProperties(reference.miscData(), instance.properties);
        m_scene.instances.push_back(std::move(instance));
    }

    const ExcProductStructure& m_structure;
    const PartOfBlock& m_parts;
    Scene& m_scene;
    Warnings& m_warnings;
    std::vector<bool> m_isOpen; ///< the walk is inside an instance of the part
};

} // namespace

void addInstances(const ExcProductStructure& structure, const PartOfBlock& parts, Scene& scene,
                  Warnings& warnings) {
    InstanceTree(structure, parts, scene, warnings).grow();
}

} // namespace zeq::scene
