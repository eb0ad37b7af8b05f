// A scene read from a text, for tests of what can be done with it.
#pragma once

#include <stdexcept>
#include <string_view>

#include <vsa/parse.h>
#include <vsa/scene.h>

namespace api_test {

/// Throws std::runtime_error when the text is not read to its end.
inline vsa::Scene sceneOf(std::string_view text) {
  vsa::Scene scene;
  if (!zn::korvo_sdk::impl::parseString(&scene.plain(), zn::String::copyOf(text))) {
    throw std::runtime_error("the text was not read");
  }
  return scene;
}

}  // namespace api_test
