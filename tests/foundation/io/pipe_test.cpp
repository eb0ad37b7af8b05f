// Tests of File::open with a pipe: bytes are delivered as soon as they arrive.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <future>
#include <string>
#include <string_view>
#include <thread>

#include <vsa/foundation/file.h>

namespace zn {
namespace {

using namespace std::chrono_literals;

/// A named pipe. Its writing end is open.
class Pipe {
 public:
  Pipe() {
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    path_ = std::filesystem::path(testing::TempDir()) /
            ("vsa_pipe_" + std::to_string(::getpid()) + '_' + test->name());
    EXPECT_EQ(::mkfifo(path_.c_str(), 0600), 0);
    writer_ = ::open(path_.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_GE(writer_, 0);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    close();
    std::filesystem::remove(path_);
  }

  std::string path() const { return path_.string(); }

  void write(std::string_view bytes) const {
    EXPECT_EQ(::write(writer_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  /// Waits until all written bytes have been read.
  void drain() const {
    for (int waiting = 1; waiting != 0; std::this_thread::yield()) {
      ASSERT_EQ(::ioctl(writer_, FIONREAD, &waiting), 0);
    }
  }

  void close() {
    if (writer_ >= 0) ::close(writer_);
    writer_ = -1;
  }

 private:
  std::filesystem::path path_;
  int writer_ = -1;
};

std::string buffered(File& file) {
  const File::Window window = file.fill();
  return std::string(window.begin, window.end);
}

std::string restOf(File& file) {
  std::string bytes;
  for (signed char c = 0; file.read(c);) bytes += static_cast<char>(c);
  return bytes;
}

// A read returns the bytes that have arrived, and does not wait for a full block. Therefore it
// returns before the pipe is closed.
TEST(Pipe, DeliversBytesAsTheyArrive) {
  Pipe pipe;
  pipe.write("abc");
  std::future<std::string> first = std::async(std::launch::async, [&] {
    File file = File::open(pipe.path().c_str());
    return buffered(file);
  });
  EXPECT_EQ(first.wait_for(60s), std::future_status::ready);
  pipe.close();
  EXPECT_EQ(first.get(), "abc");
}

TEST(Pipe, ReadsUntilItIsClosed) {
  Pipe pipe;
  pipe.write("ab");
  File file = File::open(pipe.path().c_str());
  EXPECT_EQ(buffered(file), "ab");
  pipe.write("cd");
  signed char c = 0;
  EXPECT_TRUE(file.read(c));
  EXPECT_EQ(c, 'a');
  pipe.close();
  EXPECT_EQ(restOf(file), "bcd");
  EXPECT_FALSE(file.failed());
}

TEST(Pipe, ByteOrderMarkMayArriveInParts) {
  struct Row {
    std::string_view first;
    std::string_view second;
    std::string_view third;
    const char* read;
  };
  for (const Row& row :
       {Row{"\xEF", "\xBB", "\xBF", ""}, Row{"\xEF", "\xBB", "\xBFz", "z"},
        Row{"\xEF\xBB", "\xBF", "z", "z"}, Row{"\xEF", "\xBB", "z", "\xEF\xBBz"},
        Row{"\xEF", "z", "\xBF", "\xEFz\xBF"}, Row{"z", "\xEF", "\xBB", "z\xEF\xBB"}}) {
    Pipe pipe;
    pipe.write(row.first);
    std::future<std::string> all = std::async(std::launch::async, [&] {
      File file = File::open(pipe.path().c_str());
      return restOf(file);
    });
    pipe.drain();
    pipe.write(row.second);
    pipe.drain();
    pipe.write(row.third);
    pipe.drain();
    pipe.close();
    EXPECT_EQ(all.get(), row.read);
  }
}

void ignoreSignal(int) {
}

TEST(Pipe, SignalDoesNotEndTheFile) {
  struct sigaction ignored = {};
  struct sigaction before = {};
  ignored.sa_handler = ignoreSignal;  // without SA_RESTART, the signal interrupts the read
  ASSERT_EQ(::sigaction(SIGUSR1, &ignored, &before), 0);
  Pipe pipe;
  pipe.write("a");
  std::string read;
  bool failed = true;
  std::atomic<bool> isDone = false;
  std::thread reader([&] {
    File file = File::open(pipe.path().c_str());
    read = restOf(file);
    failed = file.failed();
    isDone = true;
  });
  pipe.drain();
  for (int i = 0; i < 100; ++i) {
    ::pthread_kill(reader.native_handle(), SIGUSR1);
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_FALSE(isDone);
  pipe.write("b");
  pipe.close();
  reader.join();
  EXPECT_EQ(read, "ab");
  EXPECT_FALSE(failed);
  ::sigaction(SIGUSR1, &before, nullptr);
}

}  // namespace
}  // namespace zn
