// JPEG through libjpeg-turbo. Its errors arrive by longjmp, so the functions
// that call into it hold nothing that needs destroying; the decompressor and
// the pixels live one frame up.

#include <csetjmp>
#include <cstdio>  // jpeglib.h needs FILE declared first

#include <jerror.h>
#include <jpeglib.h>

#include <vector>

#include "codecs/PictureCodecs.h"

namespace kestu {

namespace {

// A progressive stream with more scans than this is refused: each scan
// costs a pass over the whole picture, and real files use about ten.
constexpr int kMaxJpegScans = 500;

struct JpegErrors {
  jpeg_error_mgr manager;
  jmp_buf jump;
};

[[noreturn]] void JumpOnJpegError(j_common_ptr info) {
  longjmp(reinterpret_cast<JpegErrors*>(info->err)->jump, 1);
}

// Warnings about metadata leave the pixels whole; every other warning means
// libjpeg is about to guess at missing or damaged data, and a guessed picture
// is refused like a broken one.
bool IsHarmlessWarning(int code) {
  return code == JWRN_ADOBE_XFORM || code == JWRN_BOGUS_ICC || code == JWRN_JFIF_MAJOR ||
         code == JWRN_EXTRANEOUS_DATA;
}

void RefuseDamageWarnings(j_common_ptr info, int level) {
  if (level < 0 && !IsHarmlessWarning(info->err->msg_code)) JumpOnJpegError(info);
}

void PrintNothing(j_common_ptr) {}

void LimitScans(j_common_ptr info) {
  const auto* decompress = reinterpret_cast<j_decompress_ptr>(info);
  if (decompress->input_scan_number > kMaxJpegScans) JumpOnJpegError(info);
}

uint8_t Scale(unsigned a, unsigned b) {
  return static_cast<uint8_t>((a * b + 127) / 255);
}

// Four-ink pixels to RGB. Files with the Adobe marker store the inks
// inverted, which is what almost every CMYK JPEG has.
uint32_t CmykToArgb(const JSAMPLE* ink, bool inverted) {
  const auto level = [&](int i) -> unsigned { return inverted ? ink[i] : 255u - ink[i]; };
  return Argb(0xFF, Scale(level(0), level(3)), Scale(level(1), level(3)),
              Scale(level(2), level(3)));
}

// One decompressor for one picture, destroyed however the decode ends.
class JpegReader {
 public:
  explicit JpegReader(std::span<const uint8_t> bytes) : bytes_(bytes) {
    jpeg_std_error(&errors_.manager);
    errors_.manager.error_exit = JumpOnJpegError;
    errors_.manager.emit_message = RefuseDamageWarnings;
    errors_.manager.output_message = PrintNothing;
    info_.err = &errors_.manager;
    progress_.progress_monitor = LimitScans;
  }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;
  // Safe before creation too: an uncreated decompressor has no memory pool.
  ~JpegReader() { jpeg_destroy_decompress(&info_); }

  int Width() const { return static_cast<int>(info_.output_width); }
  int Height() const { return static_cast<int>(info_.output_height); }

  // Reads the header and chooses RGB output, or inks for CMYK files.
  bool ReadHeader() {
    if (setjmp(errors_.jump)) return false;
    jpeg_create_decompress(&info_);
    info_.progress = &progress_;
    jpeg_mem_src(&info_, bytes_.data(), static_cast<unsigned long>(bytes_.size()));
    jpeg_read_header(&info_, TRUE);
    const bool inks = info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
    info_.out_color_space = inks ? JCS_CMYK : JCS_RGB;
    jpeg_calc_output_dimensions(&info_);
    return true;
  }

  // Decodes every row into `pixels`, then reads on to the end marker: a
  // stream cut short is refused, not padded with grey.
  bool ReadImage(uint32_t* pixels) {
    if (setjmp(errors_.jump)) return false;
    jpeg_start_decompress(&info_);
    const JDIMENSION width = info_.output_width;
    const int components = info_.output_components;
    JSAMPARRAY row = (*info_.mem->alloc_sarray)(reinterpret_cast<j_common_ptr>(&info_), JPOOL_IMAGE,
                                                width * components, 1);
    while (info_.output_scanline < info_.output_height) {
      uint32_t* out = pixels + static_cast<size_t>(info_.output_scanline) * width;
      if (jpeg_read_scanlines(&info_, row, 1) != 1) return false;
      PackRow(row[0], width, components, out);
    }
    jpeg_finish_decompress(&info_);
    return true;
  }

 private:
  void PackRow(const JSAMPLE* in, JDIMENSION width, int components, uint32_t* out) const {
    const bool inverted_inks = info_.saw_Adobe_marker;
    for (JDIMENSION x = 0; x < width; ++x, in += components) {
      out[x] = components == 4 ? CmykToArgb(in, inverted_inks) : Argb(0xFF, in[0], in[1], in[2]);
    }
  }

  std::span<const uint8_t> bytes_;
  JpegErrors errors_{};
  jpeg_progress_mgr progress_{};
  jpeg_decompress_struct info_{};
};

}  // namespace

StdPicture DecodeJpeg(std::span<const uint8_t> bytes) {
  JpegReader reader(bytes);
  if (!reader.ReadHeader()) ThrowInvalidPicture();
  CheckPictureSize(reader.Width(), reader.Height());
  std::vector<uint32_t> pixels(static_cast<size_t>(reader.Width()) * reader.Height());
  if (!reader.ReadImage(pixels.data())) ThrowInvalidPicture();
  return StdPicture(reader.Width(), reader.Height(), std::move(pixels));
}

}  // namespace kestu
