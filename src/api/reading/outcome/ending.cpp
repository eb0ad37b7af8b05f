#include "api/reading/outcome/ending.h"

#include <new>

#include "vsa/apply/read_session.h"

namespace vsa {

namespace {

using zn::korvo_sdk::impl::ReadStopped;

// Returns the text of an exception, or a constant text if it has none. The text is valid as long as
// the exception exists.
std::string_view textOf(const std::exception_ptr& exception) noexcept {
  try {
    std::rethrow_exception(exception);
  } catch (const std::exception& error) {
    const char* const text = error.what();
    return text != nullptr ? text : "an exception without a text";
  } catch (...) {
    return "an exception that is no std::exception";
  }
}

bool isOutOfMemory(const std::exception_ptr& exception) noexcept {
  try {
    std::rethrow_exception(exception);
  } catch (const std::bad_alloc&) {
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace

void Ending::set(ReadStatus status, std::string_view message) noexcept {
  outcome_.status = status;
  if (status != ReadStatus::OverLimit) outcome_.limit.reset();
  try {
    outcome_.message = message;
  } catch (const std::bad_alloc&) {
    outcome_.message.clear();
  }
}

void Ending::setToException() noexcept {
  outcome_.exception = std::current_exception();
  const bool isMemory = isOutOfMemory(outcome_.exception);
  set(isMemory ? ReadStatus::OutOfMemory : ReadStatus::HostException, textOf(outcome_.exception));
}

void Ending::stop(ReadStatus status, std::string_view message) {
  set(status, message);
  throw ReadStopped();
}

void Ending::stopForHost() {
  setToException();
  throw ReadStopped();
}

}  // namespace vsa
