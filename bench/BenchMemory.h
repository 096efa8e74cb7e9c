#pragma once

// Memory figures of this process for benchmark counters, from Linux's /proc.

// Starts a new measure of the peak: VmHWM falls back to the present resident size.
void ZtBenchResetPeakMemory();
// A figure of /proc/self/status, such as "VmHWM:" (peak) or "VmRSS:" (now), in MiB; 0 if
// the system gives none.
double ZtBenchStatusMiB(const char* key);
