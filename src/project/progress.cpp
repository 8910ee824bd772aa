#include "project/progress.h"

namespace project {

void Progress::begin(const QString&, int) {}
void Progress::end() {}
void Progress::setProgress(int, int) {}
void Progress::line(const QString&) {}
void Progress::commandStarted(std::string_view) {}
void Progress::commandOutput(bool, std::string_view) {}
void Progress::commandIdle() {}
void Progress::commandEnded() {}

}  // namespace project
