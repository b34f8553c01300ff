// Restores any bytes. What is a model at all can be walked, copied, and saved to an image that restores to
// itself.
#include <cstdint>
#include <cstdlib>

#include "acis/memory_file.h"

namespace {

using zeq::test::MemoryFile;
using zeq::test::saved;

/// Walks every list and ring, which has to end, and evaluates every piece of geometry.
void walk(const ENTITY_LIST& entities) {
    ENTITY_LIST all;
    all.add(entities);
    for (int i = 0; i < all.count(); ++i) {
        ENTITY* entity = all[i];
        entity->copy_scan(all, SCAN_DELETE);
        for (ATTRIB* attribute = entity->attrib(); attribute; attribute = attribute->next())
            all.add(attribute);
        if (is_FACE(entity))
            for (LOOP* loop = static_cast<FACE*>(entity)->loop(); loop; loop = loop->next())
                for (COEDGE* coedge = loop->start(); coedge;) {
                    for (COEDGE* partner = coedge->partner(); partner && partner != coedge;)
                        partner = partner->partner();
                    coedge = coedge->next();
                    if (coedge == loop->start()) break;
                }
        if (is_SHELL(entity))
            for (FACE* face = static_cast<SHELL*>(entity)->face(); face; face = face->next()) all.add(face);
        if (is_CURVE(entity) && static_cast<CURVE*>(entity)->evaluable()) {
            auto* curve = static_cast<CURVE*>(entity);
            curve->eval_deriv(curve->param_range().finite() ? curve->param_range().start_pt() : 0.5);
        }
        if (is_SURFACE(entity) && static_cast<SURFACE*>(entity)->evaluable())
            static_cast<SURFACE*>(entity)->eval_normal({0.5, 0.5});
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryFile file(std::string(reinterpret_cast<const char*>(data), size));
    ENTITY_LIST entities;
    if (!api_restore_entity_list_file(&file, entities).ok()) {
        if (entities.count() != 0) std::abort();
        return 0;
    }
    walk(entities);
    const std::string image = saved(entities);
    if (image.compare(0, 4, "ACIS") != 0) std::abort();
    for (int i = 0; i < entities.count(); ++i) {
        ENTITY* copy = nullptr;
        if (!api_copy_entity(entities[i], copy).ok()) std::abort();
        api_del_entity(copy);
    }
    api_del_entity_list(entities);

    // Texts may get their usual form once, where a record is taken apart that was kept as it was in the
    // longer image.
    std::string before = image;
    for (const bool settled : {false, true}) {
        MemoryFile again(before);
        if (!api_restore_entity_list_file(&again, entities).ok()) std::abort();
        const std::string after = saved(entities);
        api_del_entity_list(entities);
        if (settled && after != before) std::abort();
        before = after;
    }
    return 0;
}
