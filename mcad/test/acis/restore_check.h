// What has to hold for any bytes that are restored, whether they are an image or not.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "acis/memory_file.h"
#include "platform/acis/image.h"

namespace zeq::test {

/// Walks every list and ring, which has to end, and evaluates every piece of geometry.
inline void walk(const ENTITY_LIST& entities) {
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

/// Whether a message names the record or the header, and a byte of the image.
inline bool saysWhere(const std::string& message, std::size_t imageSize) {
    long record = 0;
    std::size_t byte = 0;
    int end = 0;
    std::sscanf(message.c_str(), "header, byte %zu: %n", &byte, &end);
    if (end == 0) std::sscanf(message.c_str(), "record %ld, byte %zu: %n", &record, &byte, &end);
    return end > 0 && std::size_t(end) < message.size() && record >= 0 && byte <= imageSize;
}

/// Restores bytes. Either that fails, says where, and leaves nothing behind; or it gives entities that can be
/// walked, copied, saved to an image that restores to itself, and deleted.
/// @return what is wrong with it; empty if nothing is
inline std::string faultOfRestoring(const std::string& bytes) {
    try { // from memory of exactly that size, so that a sanitizer sees a read beyond it
        const auto exact = std::make_unique<char[]>(bytes.size());
        std::copy(bytes.begin(), bytes.end(), exact.get());
        acis_detail::image_reader(exact.get(), bytes.size(), acis_detail::restore_level::everything)
            .restore();
    } catch (const acis_detail::failure&) {
    }

    MemoryFile file(bytes);
    ENTITY_LIST entities;
    const outcome result = api_restore_entity_list_file(&file, entities);
    if (!result.ok()) {
        if (entities.count() != 0) return "a failure left entities: " + message(result);
        return saysWhere(message(result), bytes.size()) ? "" : "nobody knows where: " + message(result);
    }
    walk(entities);
    std::string image = saved(entities);
    if (image.starts_with("error")) return image;
    for (int i = 0; i < entities.count(); ++i) {
        ENTITY* copy = nullptr;
        if (!api_copy_entity(entities[i], copy).ok()) return "no copy";
        api_del_entity(copy);
    }
    api_del_entity_list(entities);

    // Texts may get their usual form once, where a record is taken apart that was kept as it was in the
    // longer image.
    for (const bool settled : {false, true}) {
        MemoryFile again(image);
        const outcome restored = api_restore_entity_list_file(&again, entities);
        if (!restored.ok()) return "what was saved cannot be restored: " + message(restored);
        std::string after = saved(entities);
        api_del_entity_list(entities);
        if (settled && after != image) return "what was saved is saved in another way";
        image = std::move(after);
    }
    return "";
}

} // namespace zeq::test
