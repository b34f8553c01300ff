// Files of ISO 10303-21, "clear text encoding of the exchange structure": STEP files. An index of the instances, who
// refers to whom, and their parameters on demand. Knows no schema.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "part21/value.h"

namespace zeq::part21 {

/// A text that is no exchange structure, with a reason for the user in UTF-8.
class ReadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ExchangeStructure;

/// An instance, or none. A view of its exchange structure, which must outlive it.
class Instance {
public:
    Instance() = default;

    explicit operator bool() const { return m_file != nullptr; }
    bool operator==(const Instance&) const = default;
    /// In the order of their file.
    bool operator<(const Instance& other) const { return m_index < other.m_index; }

    /// The number behind #; 0 for none.
    std::uint64_t number() const;
    /// The type of a simple instance, or the first of a complex one; empty for none.
    std::string_view type() const;
    /// Whether it is of that type: the one of a simple instance, any of a complex one.
    bool is(std::string_view type) const;
    bool isComplex() const;
    /// All types of a complex instance.
    std::vector<std::string_view> types() const;
    /// The parameters of that type; none when the instance is not of it.
    List parameters(std::string_view type) const;
    /// The parameters of a simple instance, or of the first type of a complex one.
    List parameters() const;
    /// All that the instance refers to, wherever in its parameters, in their order; what is not there is left out.
    std::vector<Instance> references() const;
    /// The instances that refer to this one, in the order of the file, each once.
    std::vector<Instance> users() const;
    std::vector<Instance> users(std::string_view type) const;
    /// How often others refer to it, the same one more than once perhaps.
    std::size_t userCount() const;
    /// Its types and parameters as they stand in the file.
    std::string_view raw() const;

private:
    friend class ExchangeStructure;
    Instance(const ExchangeStructure* file, std::uint32_t index) : m_file(file), m_index(index) {}

    const ExchangeStructure* m_file = nullptr;
    std::uint32_t m_index = 0;
};

/// The index of a file. Reading goes on behind what is damaged; problems() tells what was passed over. Objects can
/// be used by many threads.
class ExchangeStructure {
public:
    /// Takes about the time of reading the text once. Memory: the text, and about 40 bytes an instance and 8 a
    /// reference.
    /// @throws ReadError if the text does not begin as an exchange structure does
    explicit ExchangeStructure(std::string text);
    ExchangeStructure(const ExchangeStructure&) = delete;
    ExchangeStructure& operator=(const ExchangeStructure&) = delete;

    std::size_t size() const { return m_entries.size(); }
    /// The instance of that number; none if it is not there. Of repeated numbers the first counts.
    Instance operator[](std::uint64_t number) const;
    /// What a value refers to; none if that is not there.
    Instance operator[](const Value& value) const { return (*this)[value.reference()]; }
    /// All instances in the order of the file.
    std::vector<Instance> all() const;
    /// Those of a type, complex ones included, in the order of the file.
    std::vector<Instance> all(std::string_view type) const;
    std::size_t count(std::string_view type) const;
    /// All types of the file with at least one instance.
    const std::vector<std::string_view>& types() const { return m_types; }
    /// The largest number of an instance.
    std::uint64_t largestNumber() const { return m_largest; }

    /// The text without some instances and the references to them, which have to stand in lists.
    /// @param shortened simple instances, of whose lists no more than the first eight elements stay
    std::string textWithout(const std::vector<Instance>& leftOut,
                            const std::vector<Instance>& shortened = {}) const;

    /// The parameters of an entity of the header, such as FILE_SCHEMA; none if it is not there.
    List header(std::string_view type) const;
    /// A sentence for each place that was passed over: "line 12: ...". At most 100.
    const std::vector<std::string>& problems() const { return m_problems; }

private:
    friend class Instance;
    class Indexer;

    struct Entry {
        std::uint64_t number;
        std::uint32_t begin;       ///< in the text, of its number
        std::uint32_t body;        ///< behind the equals sign
        std::uint32_t end;         ///< its semicolon
        std::uint32_t firstType;   ///< in m_typesOf
        std::uint32_t firstTarget; ///< in m_targets
    };

    std::string_view bodyOf(const Entry& entry) const {
        return std::string_view(m_text).substr(entry.body, entry.end - entry.body);
    }
    std::span<const std::uint32_t> typesOf(std::uint32_t index) const;
    std::span<const std::uint32_t> targetsOf(std::uint32_t index) const;
    std::span<const std::uint32_t> usersOf(std::uint32_t index) const;
    const std::uint32_t* findType(std::string_view type) const;
    void findTargets(const std::vector<std::uint64_t>& numbers);
    void findUsers();

    std::string m_text;
    std::vector<Entry> m_entries;
    std::unordered_map<std::uint64_t, std::uint32_t> m_indexes;
    std::unordered_map<std::string_view, std::uint32_t> m_typeNumbers;
    std::vector<std::string_view> m_types;
    std::vector<std::vector<std::uint32_t>> m_instances; ///< of each type
    std::vector<std::uint32_t> m_typesOf;
    std::vector<std::uint32_t> m_targets;
    std::vector<std::uint32_t> m_users;
    std::vector<std::uint32_t> m_firstUser;
    std::unordered_map<std::string_view, std::string_view> m_header;
    std::vector<std::string> m_problems;
    std::uint64_t m_largest = 0;
};

} // namespace zeq::part21
