// Reads a text file and prints its log in the form in which the pages of the documentation show it.
#pragma once

#include <cstdio>

#include <vsa/vsa.h>

/// Prints messages without their level.
class PrintedLog final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String& text) override { std::printf("%s\n", text.buf()); }
};

/// Reads the file at `path` into `scene` and prints the log.
inline void readAndPrint(zn::korvo_sdk::Scene& scene, const char* path) {
  PrintedLog log;
  const zn::ScopedLogSink scope(&log);
  zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open(path), false);
}
