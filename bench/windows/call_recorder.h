#pragma once

// Writing down the calls of a scan; between the two the recorder's functions stand in for the system's.
void startRecording();
void stopRecording();
