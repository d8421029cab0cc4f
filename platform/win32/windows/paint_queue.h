#pragma once

namespace bromvale {

class WindowPeer;

// Peers whose window is behind their control's state. A scan writes texts for every entry, while the eye
// needs them at most a dozen times a second.
void queuePaint(WindowPeer& peer);
void forgetPaint(WindowPeer& peer);

// Brings all windows up to date.
void flushPaints();
// The same, when the last time is at least a frame ago. Cheap enough to be called for every entry of a scan.
void flushDuePaints();

}  // namespace bromvale
