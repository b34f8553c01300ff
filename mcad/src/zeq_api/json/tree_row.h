// The row of a class whose children are of that class again. However deeply they are nested, they are read and
// written without recursion: what is below an object waits in a list until that object is done.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "zeq_api/json/rows.h"

namespace zeq::json {

namespace detail {

/// The list of the reader or writer that is at work on this thread; the first row makes it and works it off.
template <class Pending>
class Worklist {
public:
    Worklist() {
        if (active()) return;
        m_pending = std::make_unique<std::vector<Pending>>();
        active() = m_pending.get();
    }
    ~Worklist() {
        if (isOutermost()) active() = nullptr;
    }
    Worklist(const Worklist&) = delete;
    Worklist& operator=(const Worklist&) = delete;

    bool isOutermost() const { return m_pending != nullptr; }
    static std::vector<Pending>& pending() { return *active(); }

private:
    // No more than a pointer: an object with a destructor would keep the library loaded as long as the thread runs.
    static std::vector<Pending>*& active() {
        static thread_local std::vector<Pending>* list = nullptr;
        return list;
    }

    std::unique_ptr<std::vector<Pending>> m_pending; // of the outermost one
};

/// A child that has been made and is to be read.
template <class This>
struct Unread {
    This* child;
    DomView view;
};

/// An array of which some children are read. With it ends the object that holds it.
template <class This>
struct UnreadArray {
    This* parent;
    std::uint64_t end;
    std::uint64_t objectEnd;
};

/// A child that is to be written into an element of an array.
template <class This>
struct Unwritten {
    const This* child;
    JsonValue* element;
};

/// An array of which some children are written. With it ends the object that holds it.
template <class This>
struct OpenArray {
    const std::vector<std::shared_ptr<This>>* children;
    std::size_t next;
    ByteSink::Body body;
    std::optional<ByteSink::Body> objectBody; ///< not of the outermost object, which its own writer ends
};

} // namespace detail

template <class This>
struct Tree {
    using Owner = This;
    using List = std::vector<std::shared_ptr<This>>;
    static constexpr bool mustBeLast = true;
    std::wstring_view key;
    List This::*list;
    void (This::*add)(const std::shared_ptr<This>&);

    void read(This& object, DomView::Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != Kind::array) return;
        const detail::Worklist<detail::Unread<This>> worklist;
        auto& pending = worklist.pending();
        const auto first = static_cast<std::ptrdiff_t>(pending.size());
        array->forEach([&](const DomView& element) {
            if (element.kind() == kindOf<This>()) {
                auto child = std::make_shared<This>();
                (object.*add)(child);
                pending.push_back({child.get(), element});
            }
            return true;
        });
        std::reverse(pending.begin() + first,
                     pending.end()); // the first child is read next, then what it holds
        if (!worklist.isOutermost()) return;
        while (!pending.empty()) {
            const auto next = pending.back();
            pending.pop_back();
            readNested(*next.child, next.view);
        }
    }

    void read(This& object, ByteView::Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != Kind::array) return;
        const detail::Worklist<detail::UnreadArray<This>> worklist;
        auto& open = worklist.pending();
        open.push_back({&object, array->enter(), members.leaveOpen()});
        if (!worklist.isOutermost()) return;
        ByteSource& source = array->source();
        while (!open.empty()) {
            const detail::UnreadArray<This> level = open.back();
            if (source.position() >= level.end) {
                if (source.position() != level.end || level.end != level.objectEnd) throw NotInOnePass{};
                open.pop_back();
                continue;
            }
            const ByteView element(source);
            if (element.kind() == kindOf<This>()) {
                auto child = std::make_shared<This>();
                (level.parent->*add)(child);
                readNested(*child, element);
            } else {
                source.passValue();
            }
        }
    }

    void write(const This& object, DomSink& sink) const {
        if ((object.*list).empty()) return;
        using Unwritten = detail::Unwritten<This>;
        const detail::Worklist<Unwritten> worklist;
        std::vector<Unwritten>& pending = worklist.pending();
        const auto first = static_cast<std::ptrdiff_t>(pending.size());
        sink.member(key, [&](DomSink&& to) {
            to.array([&](DomSink& array) {
                for (const auto& child : object.*list)
                    if (child) array.element([](DomSink&& element) { element.null(); });
            });
            JsonValue* element = to.out().Begin(); // where the elements stay from now on
            for (const auto& child : object.*list)
                if (child) pending.push_back({child.get(), element++});
        });
        std::reverse(pending.begin() + first, pending.end());
        if (!worklist.isOutermost()) return;
        while (!pending.empty()) {
            const Unwritten next = pending.back();
            pending.pop_back();
            DomSink element(*next.element, sink.allocator());
            writeNested(*next.child, element);
        }
    }

    void write(const This& object, ByteSink& sink) const {
        if ((object.*list).empty()) return;
        const detail::Worklist<detail::OpenArray<This>> worklist;
        auto& open = worklist.pending();
        sink.name(key);
        open.push_back({&(object.*list), 0, sink.open(Tag::array), {}});
        if (!worklist.isOutermost()) return sink.leaveOpen();
        while (!open.empty()) {
            const std::size_t depth = open.size();
            auto& array = open.back();
            if (array.next == array.children->size()) {
                sink.close(array.body);
                if (array.objectBody) sink.close(*array.objectBody);
                open.pop_back();
            } else if (const auto& child = (*array.children)[array.next++]) {
                writeNested(*child, sink);
                if (open.size() > depth) open.back().objectBody = sink.takeLeftOpen();
            }
        }
    }

    MemberShape describe() const { return {key, arrayShape({ClassShape{&typeid(This)}}), false}; }
};

/// The children of a class that are of that class too, nested as deeply as they like. The last row of a form.
template <class This>
consteval auto tree(std::wstring_view key, std::vector<std::shared_ptr<This>> This::*list,
                    void (This::*add)(const std::shared_ptr<This>&)) {
    return Tree<This>{key, list, add};
}

} // namespace zeq::json
