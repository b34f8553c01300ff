/// @file
/// The operations on whole models. None throws: each says in its outcome how it went.
#pragma once

#include "platform/acis/entity.h"
#include "platform/acis/file.h"
#include <memory>
#include <string>
#include <type_traits>

/// What went wrong.
class error_info {
public:
    explicit error_info(std::string message) : m_message(std::move(message)) {}
    const char* error_message() const { return m_message.c_str(); }

private:
    std::string m_message;
};

/// How an operation ended.
class outcome {
public:
    outcome() = default;
    outcome(int number, std::string message)
        : m_number(number), m_info(std::make_shared<const error_info>(std::move(message))) {}

    logical ok() const { return m_number == 0; }
    int error_number() const { return m_number; }
    /// Null if there is nothing to tell.
    const error_info* get_error_info() const { return m_info.get(); }

private:
    int m_number = 0;
    std::shared_ptr<const error_info> m_info;
};

/// @name Error numbers
/// @{
enum : int {
    ACIS_BAD_ARGUMENT = 1,
    ACIS_SAVE_FAILED = 2,
    ACIS_RESTORE_FAILED = 3,
    ACIS_OPERATION_FAILED = 4,
};
/// @}

namespace acis_detail {
/// The outcome for the exception that is being handled.
outcome outcome_of_exception(int number);
} // namespace acis_detail

/// Runs a block of kernel calls: the outcome is what the block returns, or a failed one if anything in it
/// throws.
template <class Block>
outcome api_block(Block&& block) {
    try {
        return block();
    } catch (...) {
        return acis_detail::outcome_of_exception(ACIS_OPERATION_FAILED);
    }
}

/// Kernel options; there are none yet, so every call takes a null pointer.
class AcisOptions;

/// Installs the chosen fields (FileIdent | FileUnits) for the images that this thread saves from now on.
outcome api_set_file_info(unsigned long fields, const FileInfo& info);
/// What the last image that this thread restored said in its header.
const FileInfo& api_restored_file_info();

/// Saves the entities, first on the list first, and everything that they lead to.
outcome api_save_entity_list_file(BinaryFile* file, const ENTITY_LIST& entities, AcisOptions* = nullptr);
/// Restores an image and appends its top entities to the list; on failure the list is as before.
outcome api_restore_entity_list_file(BinaryFile* file, ENTITY_LIST& entities, AcisOptions* = nullptr);
/// Copies an entity with everything below it. Of the attributes, those are copied whose copy owner action
/// says so; those that are to be lost with the copying of their owner are lost. What the copy leads to lies
/// in the copy, or is null.
outcome api_copy_entity(ENTITY* entity, ENTITY*& copy, AcisOptions* = nullptr);
/// Deletes an entity and everything that it leads to.
outcome api_del_entity(ENTITY* entity, AcisOptions* = nullptr);
/// Deletes the entities and everything that they lead to, each once, and clears the list. What was restored
/// together and may share geometry is to be deleted together.
outcome api_del_entity_list(ENTITY_LIST& entities, AcisOptions* = nullptr);
