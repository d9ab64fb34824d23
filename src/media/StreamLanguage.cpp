#include "media/StreamLanguage.h"

#include "core/Text.h"

namespace mw {

std::string StreamLanguageCode(std::string_view strn, CodeEnd end)
{
    const auto dash = strn.find('-');
    if (dash == std::string_view::npos)
        return "";
    const auto from = dash + 1;
    const auto to = strn.find_first_of(end == CodeEnd::Semicolon ? ";" : ";-", from);
    std::string code = Trim(strn.substr(from, to == std::string_view::npos ? std::string_view::npos : to - from));
    return code.size() == 2 ? code : "";
}

} // namespace mw
