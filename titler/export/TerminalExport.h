// An export that is watched from a terminal.
#pragma once

namespace titler {

class FrameSequence;

/// Waits for the end of an export. Where standard error is a terminal, a counter runs there in one line.
/// Ctrl+C and a request to end cancel the export; a second one ends the program at once.
/// @return 0, or the signal that cancelled.
int WatchExport(FrameSequence& sequence);

} // namespace titler
