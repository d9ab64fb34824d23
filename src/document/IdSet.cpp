#include "document/IdSet.h"

#include "core/Text.h"

#include <algorithm>

namespace mw {

void IdSet::Add(long long id)
{
    std::string entry = Pad4(id);
    entries_.insert(std::upper_bound(entries_.begin(), entries_.end(), entry), std::move(entry));
}

std::string IdSet::EntryOf(std::string_view value)
{
    const std::string text = Lower(Trim(value));
    if (text.empty() || text.size() > 18 || text.find_first_not_of("0123456789") != std::string::npos)
        return text;
    return Pad4(LeadingNumber(text));
}

long IdSet::Find(long long id) const { return Find(Pad4(id)); }

long IdSet::Find(const std::string& entry) const
{
    const auto at = std::lower_bound(entries_.begin(), entries_.end(), entry);
    if (at == entries_.end() || *at != entry)
        return -1;
    return static_cast<long>(at - entries_.begin());
}

} // namespace mw
