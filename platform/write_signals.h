#pragma once

namespace varo {

// Readies the process for writing files: a file-size limit makes a write fail (EFBIG) instead of
// ending the program, and SIGTERM, SIGHUP and SIGINT that arrive while a file is being saved wait
// until the save has cleaned up after itself, then take their usual course. Call it first thing
// in main (the standard output may be a file too); saving calls it as well. Safe to call again.
void PrepareFileWrites();

// While one lives, SIGTERM, SIGHUP and SIGINT are held back; the last one to end delivers what
// arrived meanwhile, as the program had it before (usually: the program ends by that signal).
class HeldEndingSignals {
  public:
    HeldEndingSignals();
    ~HeldEndingSignals();
    HeldEndingSignals(const HeldEndingSignals&) = delete;
    HeldEndingSignals& operator=(const HeldEndingSignals&) = delete;
};

}  // namespace varo
