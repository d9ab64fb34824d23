#pragma once

#include "build/BuildLog.h"
#include "build/ToolRunner.h"
#include "dvd/DvdPlan.h"

#include <filesystem>
#include <optional>
#include <string>

namespace mw {

class Project;

struct DvdExportRequest {
    std::filesystem::path Target; // the folder that receives VIDEO_TS
    std::optional<std::filesystem::path> Iso;
    std::optional<TvStandard> Standard; // by default the one of the first title's frame rate
    std::string Language;               // a menu language's code; empty for all of them
};

// The plan of the request, with the sizes and rates of the project's movies read from the files.
DvdPlan PlanDvdExport(Project& project, const DvdExportRequest& request);

// Makes the project a DVD-Video folder, and an ISO image when asked: every menu and title
// transcoded, the buttons muxed into each menu, dvdauthor, genisoimage. The log shows each step, the
// tools' output and what the disc leaves out of the project. The work is done in a folder of its
// own under the program folder's "tmp", the disc is made beside the target and takes its place
// only when every step succeeded; a failure or a cancel leaves the old target, the old image and
// the project as they were. False with the reason in error.
bool ExportDvd(Project& project, const DvdExportRequest& request, ToolRunner& runner, BuildLog& log,
               std::string& error);

} // namespace mw
