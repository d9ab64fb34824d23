#include "document/IdSet.h"

#include "core/Text.h"

#include <algorithm>

namespace mw {

void IdSet::Add(long long id)
{
    std::string entry = Pad4(id);
    const auto at = std::lower_bound(entries_.begin(), entries_.end(), entry);
    if (at == entries_.end() || *at != entry)
        entries_.insert(at, std::move(entry));
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
