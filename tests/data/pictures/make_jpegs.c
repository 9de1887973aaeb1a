/* Writes the JPEG files the picture tests decode: 16 x 16 pictures of four
 * solid 8 x 8 blocks, which JPEG keeps almost exactly at full quality.
 *
 *   cc make_jpegs.c -ljpeg -o /tmp/make_jpegs && /tmp/make_jpegs <this folder>
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <jpeglib.h>

enum { kSide = 16 };

/* Block b is top-left, top-right, bottom-left, bottom-right. */
static const unsigned char kColours[4][3] = {
    {200, 30, 40}, {20, 180, 60}, {40, 50, 220}, {250, 250, 250}};
static const unsigned char kGreys[4] = {30, 90, 160, 230};
/* Inks as CMYK files store them (inverted, with the Adobe marker). */
static const unsigned char kInks[4][4] = {
    {255, 128, 0, 200}, {0, 255, 255, 255}, {255, 255, 255, 100}, {60, 200, 120, 255}};

static int Block(int x, int y) { return (y >= 8) * 2 + (x >= 8); }

static void Write(const char* folder, const char* name, J_COLOR_SPACE space, int components,
                  int progressive) {
  char path[4096];
  snprintf(path, sizeof path, "%s/%s", folder, name);
  FILE* file = fopen(path, "wb");
  if (!file) {
    perror(path);
    exit(1);
  }
  struct jpeg_compress_struct info;
  struct jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  jpeg_stdio_dest(&info, file);
  info.image_width = kSide;
  info.image_height = kSide;
  info.input_components = components;
  info.in_color_space = space;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, 100, TRUE);
  for (int c = 0; c < info.num_components; ++c) {
    info.comp_info[c].h_samp_factor = 1; /* no chroma subsampling */
    info.comp_info[c].v_samp_factor = 1;
  }
  if (progressive) jpeg_simple_progression(&info);
  jpeg_start_compress(&info, TRUE);
  unsigned char row[kSide * 4];
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const int b = Block(x, y);
      if (components == 1) row[x] = kGreys[b];
      if (components == 3) memcpy(row + 3 * x, kColours[b], 3);
      if (components == 4) memcpy(row + 4 * x, kInks[b], 4);
    }
    JSAMPROW rows[1] = {row};
    jpeg_write_scanlines(&info, rows, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  fclose(file);
}

int main(int argc, char** argv) {
  const char* folder = argc > 1 ? argv[1] : ".";
  Write(folder, "jpeg_baseline.jpg", JCS_RGB, 3, 0);
  Write(folder, "jpeg_progressive.jpg", JCS_RGB, 3, 1);
  Write(folder, "jpeg_gray.jpg", JCS_GRAYSCALE, 1, 0);
  Write(folder, "jpeg_cmyk.jpg", JCS_CMYK, 4, 0);
  return 0;
}
