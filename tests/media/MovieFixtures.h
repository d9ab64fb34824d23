#pragma once

// The movies that the inspection, grab and command-line tests share, made by the ffmpeg
// command (spumux for the subtitles, mencoder and GStreamer for files of other muxers) once per
// test run. Each gives an empty path when a tool is missing or fails; the tests then skip.

#include "media/MediaFixtures.h"

#include <fstream>

namespace mw::test {

// ffmpeg's MPEG-4 encoder under the DX50 tag, as in the projects' movies; options follow the codec.
inline std::filesystem::path Dx50Movie(const std::string& name, const std::string& inputs, const std::string& options)
{
    return FfmpegFixture(name, inputs + " -c:v mpeg4 -vtag DX50 " + options);
}

// 2 s of DX50 at 25 fps, 320x240, with two MP3 streams named as projects name them: 48 kHz
// "Audio - en-US;02" and 44.1 kHz "Audio - de-DE;03".
inline std::filesystem::path PalMovieWithTwoMp3()
{
    return Dx50Movie("pal-two-mp3.avi",
                     "-f lavfi -i color=c=blue:s=320x240:r=25:d=2 -f lavfi -i sine=f=440:r=48000:d=2 "
                     "-f lavfi -i sine=f=220:r=44100:d=2 -map 0 -map 1 -map 2",
                     "-g 12 -c:a libmp3lame -b:a 128k -metadata:s:a:0 'title=Audio - en-US;02' "
                     "-metadata:s:a:1 'title=Audio - de-DE;03'");
}

// 48 frames of DX50 at 24000/1001 fps, 352x240.
inline std::filesystem::path NtscMovie()
{
    return Dx50Movie("ntsc.avi", "-f lavfi -i color=c=red:s=352x240:r=24000/1001", "-frames:v 48");
}

// 25 chunks of 64x48 DX50 at 25 fps whose grey level tells the frame: 16 + 8 n. Frames 10 to
// 14 are dropped (empty chunks); a key frame every 8 coded frames gives keys at 0, 8 and 21.
inline std::filesystem::path DroppedFramesMovie()
{
    return Dx50Movie("dropped.avi", "-f lavfi -i \"color=c=black:s=64x48:r=25:d=1,format=gray,geq=lum='16+8*N'\"",
                     "-vf \"select='not(between(n,10,14))'\" -fps_mode passthrough -g 8 "
                     "-sc_threshold 1000000000 -q:v 2");
}

// 40 frames of 64x48 DX50 at 25 fps coded with two B-frames between the others, whose grey
// level tells the frame: 16 + 5 n. Key frames every 12 frames, each followed by B-frames that are
// shown before it.
inline std::filesystem::path BFramesMovie()
{
    return Dx50Movie("bframes.avi", "-f lavfi -i \"color=c=black:s=64x48:r=25:d=1.6,format=gray,geq=lum='16+5*N'\"",
                     "-g 12 -bf 2 -sc_threshold 1000000000 -q:v 2");
}

// 4 s of FFmpeg's coloured test picture, 64x48 DX50 at 25 fps, a key frame every 50 frames.
inline std::filesystem::path TestPictureMovie()
{
    return Dx50Movie("testsrc.avi", "-f lavfi -i testsrc=s=64x48:r=25:d=4", "-g 50 -sc_threshold 1000000000");
}

// 2 s of 160x120 DX50 with MP3 sound, written by mencoder, a key frame every 10 frames.
inline std::filesystem::path MencoderMovie()
{
    const auto source = FfmpegFixture("mencoder-source.avi", "-f lavfi -i testsrc=s=160x120:r=25:d=2 "
                                                             "-f lavfi -i sine=f=440:r=44100:d=2 -c:v ffv1 -c:a pcm_s16le");
    if (source.empty())
        return {};
    return CommandFixture("mencoder.avi", "mencoder",
                          "mencoder -really-quiet '" + source.string() +
                              "' -ovc lavc -lavcopts vcodec=mpeg4:keyint=10 -ffourcc DX50 -oac mp3lame -o ");
}

// 50 frames of 160x120 MPEG-4 and 2.3 s of PCM sound, written by GStreamer's avimux, which does
// not interleave: all the sound chunks come first, then all the video chunks.
inline std::filesystem::path GstreamerMovie()
{
    return CommandFixture("gstreamer.avi", "gst-launch-1.0",
                          "gst-launch-1.0 -q audiotestsrc num-buffers=100 ! audio/x-raw,rate=44100,channels=2 ! "
                          "queue ! m. videotestsrc num-buffers=50 ! video/x-raw,width=160,height=120,framerate=25/1 ! "
                          "avenc_mpeg4 gop-size=12 ! queue ! avimux name=m ! filesink location=");
}

// 3 s of 720x576 DX50 at 25 fps with an XSUB stream named "Subtitle - en-US;02", made from a
// DVD subtitle that spumux muxes into an MPEG program stream.
inline std::filesystem::path XsubMovie()
{
    const auto folder = MediaFixtureFolder();
    const auto movie = folder / "xsub.avi";
    if (std::filesystem::exists(movie))
        return movie;
    if (!HaveTool("spumux"))
        return {};
    const auto picture = FfmpegFixture("subtitle.png", "-f lavfi -i \"color=c=black@0.0:s=320x48,format=rgba,"
                                                       "drawbox=x=10:y=10:w=100:h=20:color=white:t=fill\" "
                                                       "-frames:v 1");
    const auto base = FfmpegFixture("subtitle-base.mpg", "-f lavfi -i color=c=blue:s=720x576:r=25:d=3 "
                                                         "-c:v mpeg2video -f vob");
    if (picture.empty() || base.empty())
        return {};
    const auto script = folder / "subtitle.xml";
    std::ofstream(script) << "<subpictures><stream><spu start=\"00:00:00.50\" end=\"00:00:02.00\" image=\""
                          << picture.string() << "\" force=\"yes\"/></stream></subpictures>\n";
    const auto muxed = folder / "subtitle-muxed.mpg";
    const std::string spumux = "VIDEO_FORMAT=PAL spumux '" + script.string() + "' < '" + base.string() + "' > '" +
                               muxed.string() + "' 2>/dev/null";
    if (std::system(spumux.c_str()) != 0)
        return {};
    return Dx50Movie("xsub.avi", "-i '" + muxed.string() + "' -map 0:v -map 0:s",
                     "-c:s xsub -metadata:s:s:0 'title=Subtitle - en-US;02'");
}

} // namespace mw::test
