// Indexes the instances in one pass over the text, without recursion.
#include "part21/exchange_structure.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "part21/scan.h"

namespace zeq::part21 {

namespace {

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t mostTypes = 100; // of an instance; entities of the standard have a dozen

} // namespace

/// Fills an index from its text, statement by statement.
class ExchangeStructure::Indexer {
public:
    explicit Indexer(ExchangeStructure& file) : m_file(file), m_text(file.m_text) {}

    void index() {
        constexpr std::size_t usualLength = 60;
        m_file.m_entries.reserve(m_text.size() / usualLength);
        m_file.m_indexes.reserve(m_text.size() / usualLength);
        bool isData = false, isHeader = false, isEnded = false;
        for (;;) {
            m_at = skipSpace(m_text, m_at);
            if (m_at >= m_text.size()) break;
            if (m_text[m_at] == '#') {
                if (isData)
                    readInstance();
                else
                    skipStatement();
                continue;
            }
            const std::size_t begin = m_at;
            const std::string_view keyword = m_text.substr(begin, skipKeyword(m_text, begin) - begin);
            m_at += keyword.size();
            if (keyword == "HEADER" || keyword == "DATA") {
                isHeader = keyword == "HEADER";
                isData = !isHeader;
                skipStatement();
            } else if (keyword == "ENDSEC") {
                isEnded = isEnded || isData;
                isData = isHeader = false;
                skipStatement();
            } else if (keyword.starts_with("END-ISO-10303-21")) {
                break;
            } else {
                if (isData) tell(begin, "what stands here is no instance");
                m_at = skipSpace(m_text, m_at);
                const std::string_view body = m_text.substr(m_at);
                skipStatement();
                if (isHeader && body.starts_with('(')) m_file.m_header.emplace(keyword, body);
            }
        }
        if (!isEnded) tell(m_text.size(), "the file ends before its data section does");
        m_file.findTargets(m_targets);
        m_file.findUsers();
    }

private:
    void skipStatement() { m_at = std::min(semicolon() + 1, m_text.size()); }

    /// The next semicolon that is in no string and no comment.
    std::size_t semicolon() const {
        for (std::size_t at = m_at; at < m_text.size();) {
            at = m_text.find_first_of(";'\"/", at);
            if (at == m_text.npos) break;
            if (m_text[at] == ';') return at;
            if (m_text[at] == '/')
                at = std::max(skipSpace(m_text, at), at + 1);
            else
                at = skipString(m_text, at);
        }
        return m_text.size();
    }

    bool readNumber(std::uint64_t& number) {
        const char* const begin = m_text.data() + m_at + 1;
        const auto [end, error] = std::from_chars(begin, m_text.data() + m_text.size(), number);
        m_at = static_cast<std::size_t>(end - m_text.data());
        return error == std::errc() && end > begin;
    }

    void readInstance() {
        const std::size_t begin = m_at;
        std::uint64_t number = 0;
        if (!readNumber(number) || number == 0) return giveUp(begin, "the instance has no number");
        m_at = skipSpace(m_text, m_at);
        if (m_at >= m_text.size() || m_text[m_at] != '=')
            return giveUp(begin, "there is no equals sign behind the number");
        const std::size_t body = m_at = skipSpace(m_text, m_at + 1);
        const auto firstType = static_cast<std::uint32_t>(m_file.m_typesOf.size());
        const auto firstTarget = static_cast<std::uint32_t>(m_targets.size());
        const bool isWhole = readBody();
        const bool hasTooMany = m_file.m_typesOf.size() - firstType > mostTypes;
        const bool isNew = isWhole && !hasTooMany && m_file.m_typesOf.size() > firstType &&
                           m_file.m_indexes.try_emplace(number, nextIndex()).second;
        if (!isNew) {
            m_file.m_typesOf.resize(firstType);
            m_targets.resize(firstTarget);
            if (!isWhole) return tell(begin, "the instance does not end");
            if (hasTooMany) return tell(begin, "the instance has more than 100 types");
            return tell(begin, m_file.m_indexes.contains(number) ? "the number is that of another instance"
                                                                 : "the instance has no type");
        }
        for (std::size_t i = firstType; i < m_file.m_typesOf.size(); ++i) {
            std::vector<std::uint32_t>& instances = m_file.m_instances[m_file.m_typesOf[i]];
            if (instances.empty() || instances.back() != nextIndex()) instances.push_back(nextIndex());
        }
        m_file.m_largest = std::max(m_file.m_largest, number);
        const auto place = [](std::size_t at) { return static_cast<std::uint32_t>(at); };
        m_file.m_entries.push_back(
            {number, place(begin), place(body), place(m_at - 1), firstType, firstTarget});
    }

    /// Reads types and references up to behind the semicolon; false when there is none before the next instance.
    bool readBody() {
        const bool isComplex = m_at < m_text.size() && m_text[m_at] == '(';
        const int depthOfTypes = isComplex ? 1 : 0;
        for (int depth = 0; m_at < m_text.size();) {
            const char c = m_text[m_at];
            switch (c) {
            case ';':
                ++m_at;
                return true;
            case '\'':
            case '"':
                m_at = skipString(m_text, m_at);
                if (m_at < m_text.size() && m_text[m_at] == '\n' && m_text[m_at - 1] != c) return false;
                continue;
            case '/':
                m_at = std::max(skipSpace(m_text, m_at), m_at + 1);
                continue;
            case '(':
                ++depth;
                break;
            case ')':
                --depth;
                break;
            case '#': {
                const std::size_t begin = m_at;
                std::uint64_t target = 0;
                if (!readNumber(target)) continue;
                const std::size_t next = skipSpace(m_text, m_at);
                if (next < m_text.size() && m_text[next] == '=') {
                    m_at = begin;
                    return false;
                }
                m_targets.push_back(target);
                continue;
            }
            default:
                if (depth == depthOfTypes && isKeyword(c) && !isDigit(c) && c != '-') {
                    const std::size_t end = skipKeyword(m_text, m_at);
                    addType(m_text.substr(m_at, end - m_at));
                    m_at = end;
                    continue;
                }
            }
            ++m_at;
        }
        return false;
    }

    void addType(std::string_view name) {
        const auto next = static_cast<std::uint32_t>(m_file.m_types.size());
        const auto [entry, isNew] = m_file.m_typeNumbers.try_emplace(name, next);
        if (isNew) {
            m_file.m_types.push_back(name);
            m_file.m_instances.emplace_back();
        }
        m_file.m_typesOf.push_back(entry->second);
    }

    std::uint32_t nextIndex() const { return static_cast<std::uint32_t>(m_file.m_entries.size()); }

    void giveUp(std::size_t where, const char* what) {
        tell(where, what);
        skipStatement();
    }

    void tell(std::size_t where, const char* what) {
        constexpr std::size_t most = 100;
        if (m_file.m_problems.size() >= most) return;
        m_line +=
            static_cast<std::size_t>(std::count(m_text.begin() + static_cast<std::ptrdiff_t>(m_counted),
                                                m_text.begin() + static_cast<std::ptrdiff_t>(where), '\n'));
        m_counted = where;
        m_file.m_problems.push_back("line " + std::to_string(m_line) + ": " + what);
    }

    ExchangeStructure& m_file;
    const std::string_view m_text;
    std::size_t m_at = 0;
    std::vector<std::uint64_t> m_targets; ///< the numbers, of instances that may come later
    std::size_t m_line = 1;
    std::size_t m_counted = 0; ///< up to where lines have been counted
};

ExchangeStructure::ExchangeStructure(std::string text) : m_text(std::move(text)) {
    const std::size_t begin = skipSpace(m_text, m_text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    if (!std::string_view(m_text).substr(begin).starts_with("ISO-10303-21"))
        throw ReadError("it is no exchange structure: it does not begin with ISO-10303-21");
    if (m_text.size() > nowhere) throw ReadError("its text is larger than 4 GiB");
    Indexer(*this).index();
}

void ExchangeStructure::findTargets(const std::vector<std::uint64_t>& numbers) {
    m_targets.reserve(numbers.size());
    for (const std::uint64_t number : numbers) {
        const auto found = m_indexes.find(number);
        m_targets.push_back(found == m_indexes.end() ? nowhere : found->second);
    }
}

void ExchangeStructure::findUsers() {
    m_firstUser.assign(m_entries.size() + 1, 0);
    for (const std::uint32_t target : m_targets)
        if (target != nowhere) ++m_firstUser[target + 1];
    for (std::size_t i = 1; i < m_firstUser.size(); ++i) m_firstUser[i] += m_firstUser[i - 1];
    m_users.resize(m_firstUser.back());
    std::vector<std::uint32_t> next(m_firstUser.begin(), m_firstUser.end() - 1);
    for (std::uint32_t user = 0; user < m_entries.size(); ++user)
        for (const std::uint32_t target : targetsOf(user))
            if (target != nowhere) m_users[next[target]++] = user;
}

std::span<const std::uint32_t> ExchangeStructure::typesOf(std::uint32_t index) const {
    const std::size_t end = index + 1 < m_entries.size() ? m_entries[index + 1].firstType : m_typesOf.size();
    return {m_typesOf.data() + m_entries[index].firstType, m_typesOf.data() + end};
}

std::span<const std::uint32_t> ExchangeStructure::targetsOf(std::uint32_t index) const {
    const std::size_t end =
        index + 1 < m_entries.size() ? m_entries[index + 1].firstTarget : m_targets.size();
    return {m_targets.data() + m_entries[index].firstTarget, m_targets.data() + end};
}

std::span<const std::uint32_t> ExchangeStructure::usersOf(std::uint32_t index) const {
    return {m_users.data() + m_firstUser[index], m_users.data() + m_firstUser[index + 1]};
}

const std::uint32_t* ExchangeStructure::findType(std::string_view type) const {
    const auto found = m_typeNumbers.find(type);
    return found == m_typeNumbers.end() ? nullptr : &found->second;
}

Instance ExchangeStructure::operator[](std::uint64_t number) const {
    const auto found = m_indexes.find(number);
    return found == m_indexes.end() ? Instance() : Instance(this, found->second);
}

std::vector<Instance> ExchangeStructure::all() const {
    std::vector<Instance> result;
    result.reserve(m_entries.size());
    for (std::uint32_t index = 0; index < m_entries.size(); ++index) result.push_back({this, index});
    return result;
}

std::vector<Instance> ExchangeStructure::all(std::string_view type) const {
    std::vector<Instance> result;
    if (const std::uint32_t* const found = findType(type))
        for (const std::uint32_t index : m_instances[*found]) result.push_back({this, index});
    return result;
}

std::size_t ExchangeStructure::count(std::string_view type) const {
    const std::uint32_t* const found = findType(type);
    return found ? m_instances[*found].size() : 0;
}

List ExchangeStructure::header(std::string_view type) const {
    const auto found = m_header.find(type);
    return found == m_header.end() ? List() : List(inParentheses(found->second));
}

std::uint64_t Instance::number() const { return m_file ? m_file->m_entries[m_index].number : 0; }

std::string_view Instance::type() const {
    return m_file ? m_file->m_types[m_file->typesOf(m_index).front()] : std::string_view();
}

bool Instance::is(std::string_view type) const {
    if (!m_file) return false;
    const std::uint32_t* const found = m_file->findType(type);
    const auto types = m_file->typesOf(m_index);
    return found && std::ranges::find(types, *found) != types.end();
}

bool Instance::isComplex() const {
    return m_file && m_file->bodyOf(m_file->m_entries[m_index]).starts_with('(');
}

std::vector<std::string_view> Instance::types() const {
    std::vector<std::string_view> result;
    if (m_file)
        for (const std::uint32_t type : m_file->typesOf(m_index)) result.push_back(m_file->m_types[type]);
    return result;
}

List Instance::parameters(std::string_view type) const {
    if (!is(type)) return {};
    const std::string_view body = m_file->bodyOf(m_file->m_entries[m_index]);
    for (std::size_t at = isComplex() ? 1 : 0; at < body.size();) {
        at = skipSpace(body, at);
        const std::size_t end = skipKeyword(body, at);
        const std::size_t open = skipSpace(body, end);
        if (end == at || open >= body.size() || body[open] != '(') break;
        const std::string_view inside = inParentheses(body.substr(open));
        if (body.substr(at, end - at) == type) return List(inside);
        at = open + inside.size() + 2;
    }
    return {};
}

List Instance::parameters() const { return parameters(type()); }

std::vector<Instance> Instance::references() const {
    std::vector<Instance> result;
    if (m_file)
        for (const std::uint32_t target : m_file->targetsOf(m_index))
            if (target != nowhere) result.push_back({m_file, target});
    return result;
}

std::vector<Instance> Instance::users() const {
    std::vector<Instance> result;
    if (m_file)
        for (const std::uint32_t user : m_file->usersOf(m_index))
            if (result.empty() || result.back().m_index != user) result.push_back({m_file, user});
    return result;
}

std::vector<Instance> Instance::users(std::string_view type) const {
    std::vector<Instance> result = users();
    std::erase_if(result, [type](const Instance& user) { return !user.is(type); });
    return result;
}

std::size_t Instance::userCount() const { return m_file ? m_file->usersOf(m_index).size() : 0; }

std::string_view Instance::raw() const {
    return m_file ? m_file->bodyOf(m_file->m_entries[m_index]) : std::string_view();
}

} // namespace zeq::part21
