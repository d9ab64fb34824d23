#pragma once

#include <string>

#include <pugixml.hpp>

namespace mw {

// Extra info is a comment whose text is a well-formed XML document by itself: exactly one
// element and nothing but blanks, comments or instructions beside it. Anything else is an
// ordinary comment.
bool ParseExtraInfo(const std::string& text, pugi::xml_document& doc);
bool IsExtraInfo(const std::string& text);

// The text of an extra-info document as it is kept in a Tag: no declaration, no line breaks,
// attributes in single quotes.
std::string ExtraInfoText(const pugi::xml_document& doc);

} // namespace mw
