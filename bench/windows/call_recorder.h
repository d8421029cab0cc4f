#pragma once

// Writing down the calls of a piece of work; between the two the recorder's functions stand in for the
// system's.
#ifdef RECORD_CALLS
void startRecording();
void stopRecording();
#else
inline void startRecording() {}
inline void stopRecording() {}
#endif
