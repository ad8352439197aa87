// The "env" command of vlchart: a readable report of a presentation environment.
#pragma once

#include <ostream>

namespace vlchart {

// Writes the settings file path, every style with its type and resolved table paths, and the
// dictionary paths, marking files that do not exist. Returns the process exit status:
// 0 when everything named exists, 1 when the settings file cannot be read, 2 when some
// named files are missing.
int ReportEnvironment(std::ostream& out);

}  // namespace vlchart
