#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

/// A map by name whose every change counts up a version, so that what names mean can be kept until it moves.
///
/// A value can be changed in place without that: through `valueOf`, where the name goes on to mean the same place.
template <typename cValue>
class cNameMap {
public:
    using cMap = std::map<std::string, cValue>;
    using const_iterator = typename cMap::const_iterator;
    using node_type = typename cMap::node_type;

    explicit cNameMap(std::uint64_t& namesVersion) : version(namesVersion) {}

    const_iterator begin() const { return map.begin(); }
    const_iterator end() const { return map.end(); }
    const_iterator find(const std::string& name) const { return map.find(name); }
    bool contains(const std::string& name) const { return map.contains(name); }
    const cValue& at(const std::string& name) const { return map.at(name); }
    std::size_t size() const { return map.size(); }
    bool empty() const { return map.empty(); }
    bool operator==(const cMap& other) const { return map == other; }

    /// The place of a name's value, or null. What is put there doesn't count as a change.
    cValue* valueOf(const std::string& name) {
        const auto entry = map.find(name);
        return entry == map.end() ? nullptr : &entry->second;
    }
    /// The place of a name's value, which is made if it isn't there. Counts as a change.
    cValue& operator[](const std::string& name) {
        ++version;
        return map[name];
    }
    /// The value of a name, which is made if it isn't there; only that counts as a change.
    cValue& valueWithInsertion(const std::string& name) {
        cValue* present = valueOf(name);
        return present != nullptr ? *present : (*this)[name];
    }
    std::size_t erase(const std::string& name) {
        ++version;
        return map.erase(name);
    }
    void clear() {
        ++version;
        map.clear();
    }
    /// Gives the value under `oldName` the name `newName`, which no value has.
    void rename(const std::string& oldName, const std::string& newName) {
        ++version;
        auto entry = map.extract(oldName);
        entry.key() = newName;
        map.insert(std::move(entry));
    }

private:
    cMap map;
    std::uint64_t& version;
};
