// GIF through giflib: the first frame, placed on the logical screen, with
// the transparent colour of the graphic control block that precedes it.

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "codecs/PictureCodecs.h"

namespace kestu {

namespace {

struct GifSource {
  std::span<const uint8_t> bytes;
  size_t position = 0;
};

// giflib treats a short count as the end of the data.
int ReadFromSource(GifFileType* gif, GifByteType* out, int length) {
  auto* source = static_cast<GifSource*>(gif->UserData);
  const size_t count =
      std::min(static_cast<size_t>(std::max(length, 0)), source->bytes.size() - source->position);
  std::memcpy(out, source->bytes.data() + source->position, count);
  source->position += count;
  return static_cast<int>(count);
}

constexpr int kNoTransparency = -1;

// The transparent index of a graphic control block, or kNoTransparency.
int TransparentIndex(const GifByteType* block) {
  if (block[0] < 4 || (block[1] & 0x01) == 0) return kNoTransparency;
  return block[4];
}

// One open GIF stream, closed however the decode ends.
class GifReader {
 public:
  explicit GifReader(std::span<const uint8_t> bytes) : source_{bytes} {
    int error = 0;
    gif_ = DGifOpen(&source_, ReadFromSource, &error);
    if (gif_ == nullptr) ThrowInvalidPicture();
  }
  GifReader(const GifReader&) = delete;
  GifReader& operator=(const GifReader&) = delete;
  ~GifReader() {
    int error = 0;
    DGifCloseFile(gif_, &error);
  }

  const GifFileType& File() const { return *gif_; }

  // Reads up to the first frame's descriptor; returns its transparent index.
  int ReadToFirstFrame() {
    int transparent = kNoTransparency;
    for (;;) {
      switch (NextRecord()) {
        case IMAGE_DESC_RECORD_TYPE:
          Check(DGifGetImageDesc(gif_));
          return transparent;
        case EXTENSION_RECORD_TYPE:
          ReadExtension(&transparent);
          break;
        default:  // the end of the stream before any frame
          ThrowInvalidPicture();
      }
    }
  }

  // Decodes the current frame's colour indices, rows in stored order. The
  // buffer grows row by row, so a frame that claims more rows than its data
  // holds fails before its full size is ever allocated.
  std::vector<GifPixelType> ReadFrameIndices() {
    const GifImageDesc& frame = gif_->Image;
    std::vector<GifPixelType> indices;
    for (int row = 0; row < frame.Height; ++row) {
      indices.resize(indices.size() + static_cast<size_t>(frame.Width));
      Check(DGifGetLine(gif_, indices.data() + indices.size() - frame.Width, frame.Width));
    }
    return indices;
  }

  // Walks the rest of the stream without decoding it, so that a file cut
  // short or damaged after the first frame is refused too.
  void ReadToTrailer() {
    for (;;) {
      switch (NextRecord()) {
        case IMAGE_DESC_RECORD_TYPE:
          Check(DGifGetImageDesc(gif_));
          SkipFrameData();
          break;
        case EXTENSION_RECORD_TYPE:
          ReadExtension(nullptr);
          break;
        default:
          return;
      }
    }
  }

 private:
  static void Check(int result) {
    if (result == GIF_ERROR) ThrowInvalidPicture();
  }

  GifRecordType NextRecord() {
    GifRecordType type = UNDEFINED_RECORD_TYPE;
    Check(DGifGetRecordType(gif_, &type));
    return type;
  }

  void ReadExtension(int* transparent) {
    int code = 0;
    GifByteType* block = nullptr;
    Check(DGifGetExtension(gif_, &code, &block));
    if (transparent != nullptr && code == GRAPHICS_EXT_FUNC_CODE && block != nullptr) {
      *transparent = TransparentIndex(block);
    }
    while (block != nullptr) Check(DGifGetExtensionNext(gif_, &block));
  }

  void SkipFrameData() {
    int code_size = 0;
    GifByteType* block = nullptr;
    Check(DGifGetCode(gif_, &code_size, &block));
    while (block != nullptr) Check(DGifGetCodeNext(gif_, &block));
  }

  GifSource source_;
  GifFileType* gif_ = nullptr;
};

// The frame's colours: its own table, else the global one. Indices past
// the table draw nothing, like the transparent index, whose colour is kept
// with a zero alpha.
std::array<uint32_t, 256> FramePalette(const GifFileType& file, int transparent) {
  const ColorMapObject* map = file.Image.ColorMap != nullptr ? file.Image.ColorMap : file.SColorMap;
  if (map == nullptr) ThrowInvalidPicture();
  std::array<uint32_t, 256> palette{};
  const int count = std::clamp(map->ColorCount, 0, 256);
  for (int i = 0; i < count; ++i) {
    const GifColorType& c = map->Colors[i];
    palette[i] = Argb(0xFF, c.Red, c.Green, c.Blue);
  }
  if (transparent >= 0) palette[transparent] &= 0x00FFFFFFu;
  return palette;
}

// The first frame's place on the picture.
struct Canvas {
  int width = 0;
  int height = 0;
  int frame_left = 0;
  int frame_top = 0;
  int frame_width = 0;
  int frame_height = 0;
  bool interlaced = false;
};

// The picture is the logical screen; a stream that leaves the screen size
// at zero gets its first frame's size instead.
Canvas ChooseCanvas(const GifFileType& file) {
  const GifImageDesc& frame = file.Image;
  CheckPictureSize(frame.Width, frame.Height);
  Canvas canvas;
  canvas.frame_width = frame.Width;
  canvas.frame_height = frame.Height;
  canvas.interlaced = frame.Interlace;
  if (file.SWidth <= 0 || file.SHeight <= 0) {
    canvas.width = frame.Width;
    canvas.height = frame.Height;
    return canvas;
  }
  CheckPictureSize(file.SWidth, file.SHeight);
  canvas.width = file.SWidth;
  canvas.height = file.SHeight;
  canvas.frame_left = frame.Left;
  canvas.frame_top = frame.Top;
  return canvas;
}

// The picture row that the n-th stored row belongs to. Interlaced frames
// store every 8th row from 0, every 8th from 4, every 4th from 2, then every
// 2nd from 1.
std::vector<int> StoredRowOrder(const Canvas& canvas) {
  std::vector<int> order;
  if (!canvas.interlaced) {
    for (int y = 0; y < canvas.frame_height; ++y) order.push_back(y);
    return order;
  }
  static constexpr std::array<std::array<int, 2>, 4> kPasses{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
  for (const auto& [first, step] : kPasses) {
    for (int y = first; y < canvas.frame_height; y += step) order.push_back(y);
  }
  return order;
}

// Places the frame on a transparent screen, clipped to it.
std::vector<uint32_t> Compose(const Canvas& canvas, const std::vector<GifPixelType>& indices,
                              const std::array<uint32_t, 256>& palette) {
  std::vector<uint32_t> pixels(static_cast<size_t>(canvas.width) * canvas.height, 0);
  const int visible = std::min(canvas.frame_width, canvas.width - canvas.frame_left);
  if (visible <= 0) return pixels;
  const std::vector<int> order = StoredRowOrder(canvas);
  for (size_t stored = 0; stored < order.size(); ++stored) {
    const int y = canvas.frame_top + order[stored];
    if (y >= canvas.height) continue;
    const GifPixelType* in = indices.data() + stored * canvas.frame_width;
    uint32_t* out = pixels.data() + static_cast<size_t>(y) * canvas.width + canvas.frame_left;
    for (int x = 0; x < visible; ++x) out[x] = palette[in[x]];
  }
  return pixels;
}

}  // namespace

StdPicture DecodeGif(std::span<const uint8_t> bytes) {
  GifReader reader(bytes);
  const int transparent = reader.ReadToFirstFrame();
  const Canvas canvas = ChooseCanvas(reader.File());
  // Taken now: reading on replaces the frame's own colour table.
  const std::array<uint32_t, 256> palette = FramePalette(reader.File(), transparent);
  const std::vector<GifPixelType> indices = reader.ReadFrameIndices();
  reader.ReadToTrailer();
  return StdPicture(canvas.width, canvas.height, Compose(canvas, indices, palette));
}

}  // namespace kestu
