#pragma once

#include "i18n/FormDesign.h"

#include <string>
#include <vector>

namespace mw {

struct DesignAttribute {
    std::string Name;
    std::string Value;
    bool operator==(const DesignAttribute&) const = default;
};

// The attributes of "<form>_Design" that give a window the texts it has, named as
// LoadTextForDesign reads them: the caption first, then the controls in the window's order.
// Empty texts are left out, as there is nothing to translate. Two controls that would give one
// attribute different texts cannot both be labelled; each such name is added to `conflicts`.
std::vector<DesignAttribute> DesignAttributes(const FormDesign& form, std::vector<std::string>& conflicts);

} // namespace mw
