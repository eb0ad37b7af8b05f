#include "tools/vsa/read_scene.h"

#include "vsa/vsa.h"

namespace vsa_tools {

namespace {

/// The file knows what it could not deliver.
std::vector<std::string> lossesOf(const zn::File& file) {
  std::vector<std::string> losses;
  if (file.failed()) losses.push_back(std::string("reading failed midway: ") + file.error().buf());
  return losses;
}

}  // namespace

FileReading readScene(zn::korvo_sdk::Scene& scene, zn::File file) {
  FileReading reading;
  static_cast<ReadOutcome&>(reading) =
      watchRead([&] { return zn::korvo_sdk::impl::parseVsa(&scene, file, false); });
  reading.losses = lossesOf(file);
  return reading;
}

}  // namespace vsa_tools
