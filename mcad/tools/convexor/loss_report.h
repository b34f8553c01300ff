// The account of what a file holds, what of it was sent, and why the rest was not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "step/step_file.h"
#include "zeq_api/exchange_mechanical/mechanical_data.h"

namespace zeq::convexor {

/// Collects by kinds, such as "faces", and becomes a document.
class LossReport {
public:
    void addHeld(std::string_view kind, std::size_t count) { m_kinds[std::string(kind)].held += count; }
    void addSent(std::string_view kind, std::size_t count) { m_kinds[std::string(kind)].sent += count; }
    /// @param items which, "#12, #15"; may be empty
    void addLost(std::string_view kind, const std::wstring& reason, std::size_t count,
                 const std::wstring& items = {});
    template <class Numbers>
    void addLost(std::string_view kind, const std::wstring& reason, const Numbers& numbers) {
        addLost(kind, reason, numbers.size(), itemsText({numbers.begin(), numbers.end()}));
    }
    void addLost(const step::Losses& losses);

    static constexpr const wchar_t* switchedOff = L"switched off by the options";
    /// Why something is missing that nobody can tell.
    static constexpr const wchar_t* noReason = L"no reason is known";
    /// Adds as lost what of a kind is neither sent nor lost.
    void closeAccount(std::string_view kind, const wchar_t* reason = noReason);

    /// Mechanical data of block 0, which stands for the file as a whole: a group for each kind, named "contents of
    /// the file: faces", with the figures "in the file" and "sent", and for each reason "left out: <reason>" with
    /// the number and "items: <reason>" with the instances.
    std::shared_ptr<ExcBlockMechanicalData> document() const;

private:
    static std::wstring itemsText(const std::vector<std::uint64_t>& numbers);

    struct Loss {
        std::size_t count = 0;
        std::wstring items;
    };
    struct Kind {
        std::size_t held = 0;
        std::size_t sent = 0;
        std::map<std::wstring, Loss> losses;
    };
    std::map<std::string, Kind, std::less<>> m_kinds;
};

} // namespace zeq::convexor
