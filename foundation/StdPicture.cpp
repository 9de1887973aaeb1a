#include "kestu/foundation/StdPicture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

#include "codecs/PictureCodecs.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {

namespace {

// Himetric units (0.01 mm) at 96 pixels per inch, rounded half up.
int32_t PixelsToHimetric(int pixels) {
  return static_cast<int32_t>((int64_t{pixels} * 2540 + 48) / 96);
}

bool StartsWith(std::span<const uint8_t> bytes, std::initializer_list<uint8_t> signature) {
  return bytes.size() >= signature.size() &&
         std::equal(signature.begin(), signature.end(), bytes.begin());
}

// Closes a file descriptor on every way out of the reader.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int Get() const { return fd_; }

 private:
  int fd_;
};

std::vector<uint8_t> ReadPictureFile(const std::filesystem::path& path) {
  // Non-blocking so that a named pipe is refused below instead of waiting
  // for a writer; it changes nothing for a regular file.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.Get() < 0) throw ErrorFromErrno(errno, path.string());
  struct stat status {};
  if (::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    throw RuntimeError(err::kPathFileAccessError, path.string());
  }
  std::vector<uint8_t> bytes;
  std::array<uint8_t, 64 * 1024> chunk;
  for (;;) {
    const ssize_t count = ::read(file.Get(), chunk.data(), chunk.size());
    if (count == 0) return bytes;
    if (count < 0) {
      if (errno == EINTR) continue;
      throw ErrorFromErrno(errno, path.string());
    }
    bytes.insert(bytes.end(), chunk.begin(), chunk.begin() + count);
  }
}

StdPicture DecodeByFormat(std::span<const uint8_t> bytes) {
  switch (SniffPictureFormat(bytes)) {
    case PictureFormat::kPng:
      return DecodePng(bytes);
    case PictureFormat::kBmp:
      return DecodeBmp(bytes);
    case PictureFormat::kIco:
      return DecodeIco(bytes);
    case PictureFormat::kGif:
      return DecodeGif(bytes);
    case PictureFormat::kJpeg:
      return DecodeJpeg(bytes);
    case PictureFormat::kUnknown:
      break;
  }
  ThrowInvalidPicture();
}

}  // namespace

StdPicture::StdPicture(int width, int height, std::vector<uint32_t> pixels)
    : width_(width), height_(height), pixels_(std::move(pixels)) {
  if (width < 0 || height < 0 ||
      pixels_.size() != static_cast<size_t>(width) * static_cast<size_t>(height)) {
    throw RuntimeError(err::kInvalidPicture);
  }
}

int32_t StdPicture::Width() const {
  return PixelsToHimetric(width_);
}

int32_t StdPicture::Height() const {
  return PixelsToHimetric(height_);
}

PictureFormat SniffPictureFormat(std::span<const uint8_t> bytes) {
  if (StartsWith(bytes, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'})) return PictureFormat::kPng;
  if (StartsWith(bytes, {'B', 'M'})) return PictureFormat::kBmp;
  // Icons and cursors share one layout; only the type word differs.
  if (StartsWith(bytes, {0, 0, 1, 0}) || StartsWith(bytes, {0, 0, 2, 0})) {
    return PictureFormat::kIco;
  }
  if (StartsWith(bytes, {'G', 'I', 'F', '8', '7', 'a'}) ||
      StartsWith(bytes, {'G', 'I', 'F', '8', '9', 'a'})) {
    return PictureFormat::kGif;
  }
  if (StartsWith(bytes, {0xFF, 0xD8, 0xFF})) return PictureFormat::kJpeg;
  return PictureFormat::kUnknown;
}

void ThrowInvalidPicture() {
  throw RuntimeError(err::kInvalidPicture);
}

void CheckPictureSize(int64_t width, int64_t height) {
  if (width <= 0 || height <= 0 || width > kMaxPictureSide || height > kMaxPictureSide ||
      width * height > kMaxPicturePixels) {
    ThrowInvalidPicture();
  }
}

PictureRef LoadPictureFromBytes(std::span<const uint8_t> bytes) {
  try {
    return std::make_shared<const StdPicture>(DecodeByFormat(bytes));
  } catch (const std::bad_alloc&) {
    throw RuntimeError(err::kOutOfMemory);
  }
}

PictureRef LoadPicture(const std::filesystem::path& path) {
  const std::vector<uint8_t> bytes = ReadPictureFile(path);
  try {
    return LoadPictureFromBytes(bytes);
  } catch (const RuntimeError& error) {
    if (error.Number() != err::kInvalidPicture) throw;
    throw RuntimeError(err::kInvalidPicture, path.string());
  }
}

}  // namespace kestu
