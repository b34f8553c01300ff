// The operations on whole models, and how their failures become outcomes.
#include "platform/acis/api.h"

#include "platform/acis/attrib.h"
#include "platform/acis/byte_block.h"
#include "platform/acis/image.h"
#include <exception>
#include <list>
#include <mutex>
#include <new>
#include <pthread.h>
#include <stdexcept>
#include <system_error>

using acis_detail::byte_block;
using acis_detail::image_reader;
using acis_detail::image_writer;
using acis_detail::restore_level;
using acis_detail::width;

namespace {
struct file_infos {
    FileInfo to_save;
    FileInfo restored;
};

/// Gives each thread its own. As thread_local objects, whose destructors wait for the end of the thread, they
/// would keep the library from being unloaded until then.
class infos_by_thread {
public:
    static file_infos& current() {
        static infos_by_thread all;
        auto* infos = static_cast<entry*>(pthread_getspecific(all.m_key));
        if (infos) return *infos;
        const std::lock_guard lock(all.m_mutex);
        all.m_infos.push_back({{}, &all});
        pthread_setspecific(all.m_key, &all.m_infos.back());
        return all.m_infos.back();
    }

private:
    struct entry : file_infos {
        infos_by_thread* owner;
    };

    infos_by_thread() {
        if (const int error = pthread_key_create(&m_key, end_of_thread))
            throw std::system_error(error, std::generic_category(), "the kernel has no key for its threads");
    }
    ~infos_by_thread() { pthread_key_delete(m_key); }

    static void end_of_thread(void* infos) {
        infos_by_thread& all = *static_cast<entry*>(infos)->owner;
        const std::lock_guard lock(all.m_mutex);
        all.m_infos.remove_if([infos](const entry& each) { return &each == infos; });
    }

    pthread_key_t m_key = 0;
    std::mutex m_mutex;
    std::list<entry> m_infos;
};

/// Runs an operation and gives its outcome.
template <class Operation>
outcome guarded(int number, Operation&& operation) {
    try {
        operation();
        return {};
    } catch (...) {
        return acis_detail::outcome_of_exception(number);
    }
}

/// The length of the image.
std::size_t restore(const char* bytes, std::size_t size, ENTITY_LIST& entities) {
    std::exception_ptr first;
    for (restore_level level :
         {restore_level::everything, restore_level::attributes, restore_level::nothing}) {
        image_reader reader(bytes, size, level);
        try {
            reader.restore();
        } catch (const acis_detail::failure&) {
            // Later versions may give their records other layouts: take less of them apart.
            if (!first) first = std::current_exception();
            if (reader.version() <= acis_detail::format_version) break;
            continue;
        }
        infos_by_thread::current().restored = reader.info();
        entities.add(reader.top());
        reader.release();
        return reader.length();
    }
    std::rethrow_exception(first);
}

void delete_all(ENTITY_LIST& list) {
    for (int i = 0; i < list.count(); ++i)
        if (list[i]) list[i]->copy_scan(list, SCAN_DELETE);
    for (ENTITY* entity = list.first(); entity; entity = list.next()) entity_access::destroy(entity);
    list.clear();
}
} // namespace

std::size_t acis_detail::read_all(BinaryFile& file, byte_block& bytes) {
    std::size_t size = 0;
    while (size == bytes.size()) {
        bytes.grow(size == 0 ? 1 << 16 : 2 * size);
        size += file.read(bytes.data() + size, bytes.size() - size, 1);
    }
    return size;
}

outcome acis_detail::outcome_of_exception(int number) {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return {number, "out of memory"};
    } catch (const std::exception& error) {
        return {number, error.what()};
    } catch (...) {
        return {number, "unknown error"};
    }
}

outcome api_set_file_info(unsigned long fields, const FileInfo& info) {
    return guarded(ACIS_BAD_ARGUMENT, [&] {
        FileInfo& to_save = infos_by_thread::current().to_save;
        if (fields & FileIdent) to_save.set_product_id(info.product_id());
        if (fields & FileUnits) to_save.set_units(info.units());
    });
}

const FileInfo& api_restored_file_info() { return infos_by_thread::current().restored; }

outcome api_save_entity_list_file(BinaryFile* file, const ENTITY_LIST& entities, AcisOptions*) {
    if (!file) return {ACIS_BAD_ARGUMENT, "there is no file to save to"};
    return guarded(ACIS_SAVE_FAILED, [&] {
        const FileInfo& info = infos_by_thread::current().to_save;
        if (info.product_id().empty())
            throw std::logic_error("the product id has to be set before saving (api_set_file_info)");
        for (width integers : {width::narrow, width::wide}) {
            image_writer writer(info, integers);
            writer.save(entities);
            if (writer.records().overflowed()) continue;
            file->write(writer.records().data(), writer.records().size(), 1);
            return;
        }
    });
}

outcome api_restore_entity_list_file(BinaryFile* file, ENTITY_LIST& entities, AcisOptions*) {
    if (!file) return {ACIS_BAD_ARGUMENT, "there is no file to restore from"};
    return guarded(ACIS_RESTORE_FAILED, [&] {
        byte_block bytes;
        std::size_t size = acis_detail::read_all(*file, bytes);
        std::size_t length = restore(bytes.data(), size, entities);
        if (length < size) file->goto_mark(file->set_mark() - FilePosition(size - length));
    });
}

outcome api_copy_entity(ENTITY* entity, ENTITY*& copy, AcisOptions*) {
    copy = nullptr;
    if (!entity) return {ACIS_BAD_ARGUMENT, "there is no entity to copy"};
    std::vector<ENTITY*> copies;
    outcome result = guarded(ACIS_OPERATION_FAILED, [&] {
        ENTITY_LIST originals;
        originals.add(entity);
        for (int i = 0; i < originals.count(); ++i) originals[i]->copy_scan(originals);
        copies.reserve(std::size_t(originals.count()));
        for (int i = 0; i < originals.count(); ++i) copies.push_back(originals[i]->copy_data(originals));
        for (ENTITY* made : copies) made->fix_pointers(copies.data());
        for (int i = 0; i < originals.count(); ++i)
            for (ATTRIB* attribute = originals[i]->attrib(); attribute;) {
                ATTRIB* next = attribute->next();
                if (attribute->get_copy_owner_action() == CopyLose) attribute->lose();
                attribute = next;
            }
        copy = copies.front();
    });
    if (!result.ok())
        for (ENTITY* made : copies) entity_access::destroy(made);
    return result;
}

outcome api_del_entity(ENTITY* entity, AcisOptions*) {
    if (!entity) return {ACIS_BAD_ARGUMENT, "there is no entity to delete"};
    return guarded(ACIS_OPERATION_FAILED, [&] {
        ENTITY_LIST list;
        list.add(entity);
        delete_all(list);
    });
}

outcome api_del_entity_list(ENTITY_LIST& entities, AcisOptions*) {
    return guarded(ACIS_OPERATION_FAILED, [&] { delete_all(entities); });
}
