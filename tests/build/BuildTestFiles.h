#pragma once

// Pictures and probes for the tests of the AVI writer, the menu video routes and the build.

#include "document/DocTree.h"
#include "media/MediaFixtures.h"
#include "render/cDIB.h"

#include <filesystem>
#include <map>
#include <sstream>
#include <string>

namespace mw::test {

// Everything of the tree that a build must leave alone: every node's key, text and Tag.
inline std::string Everything(const DocTree& tree)
{
    std::string all;
    tree.ForEach([&all](DocNode& node) { all += node.Key() + "|" + node.Text + "|" + node.Tag + "\n"; });
    return all;
}

// A 24-bit bitmap of one colour with a white diagonal, so that no two sizes look alike.
inline cDIB SolidPicture(int width, int height, Colour colour)
{
    cDIB dib;
    dib.Create(width, height, 24);
    dib.Cls(colour);
    for (int i = 0; i < width && i < height; ++i)
        dib.SetPixel(i, i, Rgb(255, 255, 255));
    return dib;
}

inline std::filesystem::path SavePicture(const std::filesystem::path& file, int width, int height, Colour colour)
{
    SolidPicture(width, height, colour).Save(file.string());
    return file;
}

// "key=value" lines of ffprobe for one stream ("v:0", "a:0"), with its packets counted.
inline std::map<std::string, std::string> ProbeStream(const std::filesystem::path& file, const std::string& stream)
{
    const std::string out = CommandOutput(
        "ffprobe -v error -count_packets -select_streams " + stream +
        " -show_entries stream=codec_name,codec_tag_string,width,height,pix_fmt,r_frame_rate,nb_read_packets,"
        "sample_rate,channels -of default=nw=1 '" + file.string() + "'");
    std::map<std::string, std::string> values;
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) {
        if (const auto eq = line.find('='); eq != std::string::npos)
            values[line.substr(0, eq)] = line.substr(eq + 1);
    }
    return values;
}

// The frames of the video decoded by ffmpeg and shrunk to one pixel each: r, g, b per frame.
inline std::string DecodedFramePixels(const std::filesystem::path& file)
{
    return CommandOutput("ffmpeg -nostdin -v error -i '" + file.string() +
                         "' -map 0:v:0 -vf scale=1:1 -f rawvideo -pix_fmt rgb24 -");
}

} // namespace mw::test
