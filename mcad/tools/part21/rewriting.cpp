// Copies the text from one gap to the next.
#include <algorithm>
#include <charconv>
#include <limits>

#include "part21/exchange_structure.h"
#include "part21/scan.h"

namespace zeq::part21 {

namespace {

/// Copies a text but for its gaps.
class Copier {
public:
    explicit Copier(std::string_view text) : m_text(text) { m_copy.reserve(text.size()); }

    /// The text goes on from there; gaps may lie within others.
    void leaveOut(std::size_t begin, std::size_t end) {
        if (begin > m_copied) m_copy += m_text.substr(m_copied, begin - m_copied);
        m_copied = std::max(m_copied, end);
    }
    /// An element of a list with a comma, the one behind it or else the one before.
    void leaveOutElement(std::size_t begin, std::size_t end) {
        const std::size_t next = skipSpace(m_text, end);
        const bool hasNext = next < m_text.size() && m_text[next] == ',';
        leaveOut(begin, hasNext ? next + 1 : end);
        if (!hasNext) m_copy.resize(m_copy.find_last_not_of(" \t\r\n,") + 1);
    }
    std::string take() {
        leaveOut(m_text.size(), m_text.size());
        return std::move(m_copy);
    }

private:
    const std::string_view m_text;
    std::string m_copy;
    std::size_t m_copied = 0; ///< up to where the text is copied or left out
};

/// Calls for every character of a part of a text that is in no string and no comment; gives the next position.
template <class Visit>
void forEachCharacter(std::string_view text, std::size_t at, std::size_t end, const Visit& visit) {
    while (at < end) {
        if (text[at] == '\'' || text[at] == '"')
            at = skipString(text, at);
        else if (const std::size_t next = skipSpace(text, at); next > at)
            at = next;
        else
            at = visit(at);
    }
}

/// Leaves out what of the lists of a simple instance stands behind their first elements.
void shorten(std::string_view text, std::size_t begin, std::size_t end, Copier& copier) {
    constexpr std::size_t most = 8;
    std::vector<std::size_t> commas; // in the lists around, that of the parameters first
    forEachCharacter(text, begin, end, [&](std::size_t at) {
        if (text[at] == '(') {
            commas.push_back(0);
        } else if (text[at] == ')' && !commas.empty()) {
            commas.pop_back();
        } else if (text[at] == ',' && commas.size() > 1 && ++commas.back() == most) {
            std::size_t behind = at;
            while (behind < end && text[behind] == ',') behind = skipValue(text, behind + 1);
            copier.leaveOut(at, behind);
            return behind;
        }
        return at + 1;
    });
}

} // namespace

std::string ExchangeStructure::textWithout(const std::vector<Instance>& leftOut,
                                           const std::vector<Instance>& shortened) const {
    enum class Fate : std::uint8_t {
        stays,
        isShortened,
        isLeftOut
    };
    std::vector<Fate> fates(m_entries.size(), Fate::stays);
    for (const Instance& instance : shortened) fates[instance.m_index] = Fate::isShortened;
    for (const Instance& instance : leftOut) fates[instance.m_index] = Fate::isLeftOut;
    const auto isMissing = [&fates](std::uint32_t target) {
        return target != std::numeric_limits<std::uint32_t>::max() && fates[target] == Fate::isLeftOut;
    };
    const std::string_view text = m_text;
    Copier copier(text);
    const auto leaveOutReference = [&](std::size_t at) {
        std::uint64_t number = 0;
        const char* const end = std::from_chars(text.data() + at + 1, text.data() + text.size(), number).ptr;
        const auto behind = static_cast<std::size_t>(end - text.data());
        const auto found = text[at] == '#' ? m_indexes.find(number) : m_indexes.end();
        if (found == m_indexes.end()) return at + 1;
        if (isMissing(found->second)) copier.leaveOutElement(at, behind);
        return behind;
    };
    for (std::uint32_t index = 0; index < m_entries.size(); ++index) {
        const Entry& entry = m_entries[index];
        if (fates[index] == Fate::isLeftOut)
            copier.leaveOut(entry.begin, entry.end + std::size_t{1});
        else if (fates[index] == Fate::isShortened)
            shorten(text, entry.body, entry.end, copier);
        else if (std::ranges::any_of(targetsOf(index), isMissing))
            forEachCharacter(text, entry.body, entry.end, leaveOutReference);
    }
    return copier.take();
}

} // namespace zeq::part21
