#include "media/StreamLanguage.h"

#include "core/Text.h"

namespace mw {

std::string StreamLanguageCode(std::string_view strn)
{
    const auto dash = strn.find('-');
    if (dash == std::string_view::npos)
        return "";
    const auto from = dash + 1;
    const auto end = strn.find_first_of(";-", from);
    std::string code = Trim(strn.substr(from, end == std::string_view::npos ? std::string_view::npos : end - from));
    return code.size() == 2 ? code : "";
}

} // namespace mw
