// PNG through libpng. libpng reports errors by longjmp, so every function
// that calls into it owns nothing that needs destroying: the structures and
// buffers live one frame up and are released by ordinary C++ unwinding.

#include <png.h>

#include <bit>
#include <cstring>
#include <new>
#include <vector>

#include "codecs/PictureCodecs.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {

namespace {

// libpng's zlib level for every snapshot: fixed, so equal pixels give equal
// bytes.
constexpr int kPngCompressionLevel = 6;

[[noreturn]] void JumpOnPngError(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}

void IgnorePngWarning(png_structp, png_const_charp) {}

// libpng writes each pixel as the bytes B, G, R, A; that is already 0xAARRGGBB
// on a little-endian machine.
void BgraBytesToArgb(std::vector<uint32_t>& pixels) {
  if constexpr (std::endian::native != std::endian::little) {
    for (uint32_t& pixel : pixels) {
      uint8_t b[4];
      std::memcpy(b, &pixel, 4);
      pixel = Argb(b[3], b[2], b[1], b[0]);
    }
  }
}

struct PngSource {
  std::span<const uint8_t> bytes;
  size_t position = 0;
};

void ReadFromSource(png_structp png, png_bytep out, png_size_t length) {
  auto* source = static_cast<PngSource*>(png_get_io_ptr(png));
  if (length > source->bytes.size() - source->position) png_error(png, "truncated");
  std::memcpy(out, source->bytes.data() + source->position, length);
  source->position += length;
}

// libpng's read structures for one picture, released however the read ends.
class PngReader {
 public:
  explicit PngReader(std::span<const uint8_t> bytes) : source_{bytes} {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, JumpOnPngError, IgnorePngWarning);
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
    if (info_ == nullptr) {
      png_destroy_read_struct(&png_, nullptr, nullptr);
      throw std::bad_alloc();
    }
    png_set_read_fn(png_, &source_, ReadFromSource);
  }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;
  ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

  // Reads the header and asks for 8-bit B, G, R, A rows whatever the colour
  // type. False when the header is damaged or over libpng's size limits.
  bool ReadHeader(png_uint_32* width, png_uint_32* height) {
    if (setjmp(png_jmpbuf(png_))) return false;
    png_set_user_limits(png_, kMaxPictureSide, kMaxPictureSide);
    png_read_info(png_, info_);
    png_set_expand(png_);  // palette, low-bit grey and tRNS to full colour with alpha
    png_set_strip_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_add_alpha(png_, 0xFF, PNG_FILLER_AFTER);
    png_set_bgr(png_);
    png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    *width = png_get_image_width(png_, info_);
    *height = png_get_image_height(png_, info_);
    return png_get_rowbytes(png_, info_) == png_size_t{*width} * 4;
  }

  // Fills every row, then insists on the end chunk: a file cut short
  // anywhere is refused, not shown half-decoded.
  bool ReadImage(png_bytepp rows) {
    if (setjmp(png_jmpbuf(png_))) return false;
    png_read_image(png_, rows);
    png_read_end(png_, nullptr);
    return true;
  }

 private:
  PngSource source_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

std::vector<png_bytep> RowPointers(std::vector<uint8_t>& bytes, size_t height) {
  std::vector<png_bytep> rows(height);
  const size_t stride = height == 0 ? 0 : bytes.size() / height;
  for (size_t y = 0; y < height; ++y) rows[y] = bytes.data() + y * stride;
  return rows;
}

// Where libpng's writer puts its output; a failed append is reported after
// the catch block, since libpng's error jump must not leave a handler.
void AppendToOutput(png_structp png, png_bytep data, png_size_t length) {
  auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
  bool out_of_memory = false;
  try {
    out->insert(out->end(), data, data + length);
  } catch (const std::bad_alloc&) {
    out_of_memory = true;
  }
  if (out_of_memory) png_error(png, "out of memory");
}

void FlushNothing(png_structp) {}

// libpng's write structures for one picture, released however the write ends.
class PngWriter {
 public:
  PngWriter() {
    png_ =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, JumpOnPngError, IgnorePngWarning);
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
    if (info_ == nullptr) {
      png_destroy_write_struct(&png_, nullptr);
      throw std::bad_alloc();
    }
  }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

  // Writes 8-bit rows of RGB or RGBA bytes; no time or other optional chunk.
  bool Write(png_uint_32 width, png_uint_32 height, bool with_alpha, png_bytepp rows,
             std::vector<uint8_t>* out) {
    if (setjmp(png_jmpbuf(png_))) return false;
    png_set_write_fn(png_, out, AppendToOutput, FlushNothing);
    png_set_IHDR(png_, info_, width, height, 8,
                 with_alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png_, kPngCompressionLevel);
    png_write_info(png_, info_);
    png_write_image(png_, rows);
    png_write_end(png_, nullptr);
    return true;
  }

 private:
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

bool AllOpaque(std::span<const uint32_t> pixels) {
  for (const uint32_t pixel : pixels) {
    if (pixel >> 24 != 0xFF) return false;
  }
  return true;
}

std::vector<uint8_t> ToSampleBytes(std::span<const uint32_t> pixels, bool with_alpha) {
  std::vector<uint8_t> bytes;
  bytes.reserve(pixels.size() * (with_alpha ? 4 : 3));
  for (const uint32_t pixel : pixels) {
    bytes.push_back(static_cast<uint8_t>(pixel >> 16));
    bytes.push_back(static_cast<uint8_t>(pixel >> 8));
    bytes.push_back(static_cast<uint8_t>(pixel));
    if (with_alpha) bytes.push_back(static_cast<uint8_t>(pixel >> 24));
  }
  return bytes;
}

}  // namespace

StdPicture DecodePng(std::span<const uint8_t> bytes) {
  PngReader reader(bytes);
  png_uint_32 width = 0;
  png_uint_32 height = 0;
  if (!reader.ReadHeader(&width, &height)) ThrowInvalidPicture();
  CheckPictureSize(width, height);
  std::vector<uint32_t> pixels(size_t{width} * height);
  std::vector<png_bytep> rows(height);
  for (size_t y = 0; y < height; ++y) {
    rows[y] = reinterpret_cast<png_bytep>(pixels.data() + y * width);
  }
  if (!reader.ReadImage(rows.data())) ThrowInvalidPicture();
  BgraBytesToArgb(pixels);
  return StdPicture(static_cast<int>(width), static_cast<int>(height), std::move(pixels));
}

std::vector<uint8_t> EncodePng(int width, int height, std::span<const uint32_t> pixels) {
  if (width <= 0 || height <= 0 || width > kMaxPictureSide || height > kMaxPictureSide ||
      pixels.size() != static_cast<size_t>(width) * static_cast<size_t>(height)) {
    throw RuntimeError(err::kInvalidProcedureCall);
  }
  // Fully opaque pixels are written without alpha: a smaller file, chosen by
  // the pixels alone, so the choice is as repeatable as the bytes.
  const bool with_alpha = !AllOpaque(pixels);
  std::vector<uint8_t> samples = ToSampleBytes(pixels, with_alpha);
  std::vector<png_bytep> rows = RowPointers(samples, static_cast<size_t>(height));
  std::vector<uint8_t> out;
  PngWriter writer;
  if (!writer.Write(static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), with_alpha,
                    rows.data(), &out)) {
    throw RuntimeError(err::kOutOfMemory);
  }
  return out;
}

}  // namespace kestu
