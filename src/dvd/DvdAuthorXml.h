#pragma once

#include "dvd/DvdPlan.h"

#include <filesystem>
#include <string>

namespace mw {

// Where an export keeps the files of each menu and title in its work folder.
struct DvdFiles {
    std::filesystem::path Folder;

    std::filesystem::path MenuVideo(int language, int menu) const;   // the transcoded background
    std::filesystem::path MenuButtons(int language, int menu) const; // with the buttons muxed in
    std::filesystem::path Highlight(int language, int menu) const;
    std::filesystem::path Select(int language, int menu) const;
    std::filesystem::path SpumuxXml(int language, int menu) const;
    std::filesystem::path Title(int title) const;
    std::filesystem::path AuthorXml() const;
};

// The control file of dvdauthor for the plan: the disc's first play and title menu, one
// titleset with every menu language and every title, written into `dest`. The files of a menu
// go by its language's place in the plan (from 0) and its number; a title's by its number.
std::string DvdAuthorXml(const DvdPlan& plan, const DvdFiles& files, const std::filesystem::path& dest);

// The spumux control file that puts the menu's buttons, with their pictures, into its video.
std::string SpumuxXml(const DvdPlan& plan, const DvdMenu& menu, const std::filesystem::path& highlight,
                      const std::filesystem::path& select);

// A time of a movie as dvdauthor reads it, "h:mm:ss.mmm".
std::string DvdTime(long frames, double fps);

} // namespace mw
