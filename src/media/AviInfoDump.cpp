#include "media/AviInfoDump.h"

namespace mw {

namespace {

class Lines {
public:
    void Add(const std::string& name, const std::string& value) { text_ += name + " = " + value + "\n"; }
    void Add(const std::string& name, long long value) { Add(name, std::to_string(value)); }
    void Mark(const std::string& mark) { text_ += mark + "\n"; }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

void DumpFile(const AviFileInfo& info, Lines& out)
{
    out.Mark("**** AVI_FILE_INFO (START) ****");
    out.Add("dwMaxBytesPerSecond", info.dwMaxBytesPerSecond);
    out.Add("dwFlags", info.dwFlags);
    out.Add("dwCaps", info.dwCaps);
    out.Add("dwStreams", info.dwStreams);
    out.Add("dwSuggestedBufferSize", info.dwSuggestedBufferSize);
    out.Add("dwWidth", info.dwWidth);
    out.Add("dwHeight", info.dwHeight);
    out.Add("dwScale", info.dwScale);
    out.Add("dwRate", info.dwRate);
    out.Add("dwLength", info.dwLength);
    out.Add("dwEditCount", info.dwEditCount);
    out.Add("szFileType", info.szFileType);
    out.Mark("**** AVI_FILE_INFO (END) ****");
}

void DumpStream(const AviStreamInfo& info, Lines& out)
{
    out.Mark("**** AVI_STREAM_INFO (START) ****");
    out.Add("fccType", FourCCToString(info.fccType));
    out.Add("fccHandler", FourCCToString(info.fccHandler));
    out.Add("dwFlags", info.dwFlags);
    out.Add("dwCaps", info.dwCaps);
    out.Add("wPriority", info.wPriority);
    out.Add("wLanguage", info.wLanguage);
    out.Add("dwScale", info.dwScale);
    out.Add("dwRate", info.dwRate);
    out.Add("dwStart", info.dwStart);
    out.Add("dwLength", info.dwLength);
    out.Add("dwInitialFrames", info.dwInitialFrames);
    out.Add("dwSuggestedBufferSize", info.dwSuggestedBufferSize);
    out.Add("dwQuality", info.dwQuality);
    out.Add("dwSampleSize", info.dwSampleSize);
    out.Add("rcFrame.left", info.rcFrame.left);
    out.Add("rcFrame.top", info.rcFrame.top);
    out.Add("rcFrame.right", info.rcFrame.right);
    out.Add("rcFrame.bottom", info.rcFrame.bottom);
    out.Add("dwEditCount", info.dwEditCount);
    out.Add("dwFormatChangeCount", info.dwFormatChangeCount);
    out.Add("szName", info.szName);
    out.Mark("**** AVI_STREAM_INFO (END) ****");
}

} // namespace

std::string DumpAviInfo(const AviFile& file)
{
    Lines out;
    DumpFile(file.FileInfo(), out);
    for (std::size_t i = 0; i < file.StreamCount(); ++i)
        DumpStream(file.Stream(i).Info, out);
    return out.Text();
}

} // namespace mw
