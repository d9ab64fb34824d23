#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mw {

// The identifiers in use during a check or a renumbering. Entries are padded to four digits and
// kept sorted as text, so "10000" stands before "2000"; an entry's position plus 1 is the number
// that renumbering gives to its object, and that order is the one required.
class IdSet {
public:
    void Add(long long id);
    // Position of the entry from 0 by exact text, or -1 when it is not in the set.
    long Find(long long id) const;
    long Find(const std::string& entry) const;

    std::size_t Count() const { return entries_.size(); }
    const std::string& Entry(std::size_t position) const { return entries_[position]; }
    void Clear() { entries_.clear(); }

private:
    std::vector<std::string> entries_;
};

} // namespace mw
