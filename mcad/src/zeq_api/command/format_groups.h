// The option groups among the options of a command: how they are kept, read and written. Internal.
#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "mp/string.h"
#include "mv_cvx/logger.h"
#include "zeq_api/command/options.h"
#include "zeq_api/json/form.h"

namespace zeq::detail {

/// The group for that format; null when there is none.
inline std::shared_ptr<IFormatOptions> findGroup(const FormatOptionsMap& groups, EFormatType type) {
    const auto found = groups.find(type);
    return found == groups.end() ? nullptr : found->second;
}

/// Adds the group or replaces the one for the same format; null is ignored.
inline void putGroup(FormatOptionsMap& groups, std::shared_ptr<IFormatOptions> group) {
    if (!group) return;
    const EFormatType type = group->formatType();
    groups[type] = std::move(group);
}

template <class This>
struct FormatGroups {
    using Owner = This;
    std::wstring_view key;
    FormatOptionsMap This::*groups;

    template <class Members>
    void read(This& options, Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != json::Kind::array) return;
        array->forEach([&](const auto& element) {
            JsonDocument scratch;
            if (auto group = IFormatOptions::readOptions(element.dom(scratch))) {
                putGroup(options.*groups, std::move(group));
            } else {
                // sic The full stop stands before the path.
                ZEQ_LOG(Error) << "Specific format options cannot be read, file: ."
                               << mp::toUtf8String(options.file());
            }
            return true;
        });
    }
    template <class Sink>
    void write(const This& options, Sink& sink) const {
        if ((options.*groups).empty()) return;
        sink.member(key, [&](auto&& to) {
            to.array([&](auto& array) {
                for (const auto& entry : options.*groups) {
                    if (const IFormatOptions* group = entry.second.get()) {
                        array.element([&](auto&& element) { json::writeNested(*group, element); });
                    } else {
                        // sic No blank stands before the path.
                        ZEQ_LOG(Error) << "Invalid specific format options object, file"
                                       << mp::toUtf8String(options.file());
                    }
                }
            });
        });
    }
    json::MemberShape describe() const {
        json::ChoiceShape choice{json::ChoiceShape::Asked::itself, {}};
        for (const auto& [operation, format] : IFormatOptions::kinds()) {
            const std::shared_ptr<IFormatOptions> group = IFormatOptions::make(operation, format);
            choice.alternatives.push_back(
                {{json::isName(L"operation_type", operation), json::isName(L"format_type", format)},
                 {json::ClassShape{json::formOf(*group)->type}}});
        }
        return {key, json::arrayShape({std::move(choice)}), false};
    }
};

/// The groups of a class of options, in ascending order of their formats; a later one of a format replaces an
/// earlier one.
template <class This>
consteval auto formatGroups(std::wstring_view key, FormatOptionsMap This::*groups) {
    return FormatGroups<This>{key, groups};
}

} // namespace zeq::detail
