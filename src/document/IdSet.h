#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// The identifiers in use during a check or a renumbering. Entries are padded to four digits and
// kept sorted as text, so "10000" stands before "2000"; an entry's position plus 1 is the number
// that renumbering gives to its object, and that order is the one required. An identifier that
// two objects hold stands twice and takes two positions.
class IdSet {
public:
    void Add(long long id);
    // Position of the first entry from 0 by exact text, or -1 when it is not in the set.
    long Find(long long id) const;
    long Find(const std::string& entry) const;
    // The entry a reference's value is looked up by: a whole number, blanks around it ignored, is
    // padded; any other text stays as it is and so is not found ("7x" does not name object 7).
    static std::string EntryOf(std::string_view value);

    std::size_t Count() const { return entries_.size(); }
    const std::string& Entry(std::size_t position) const { return entries_[position]; }
    void Clear() { entries_.clear(); }

private:
    std::vector<std::string> entries_;
};

} // namespace mw
