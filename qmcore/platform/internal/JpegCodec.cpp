#include "qmcore/platform/internal/JpegCodec.hpp"

// jpeglib.h needs FILE and size_t declared first.
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
// clang-format off
#include <jpeglib.h>
// clang-format on

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/ImageCodec.hpp"
#include "qmcore/platform/internal/PngCodec.hpp"

namespace qm::internal {
namespace {

// libjpeg reports errors by calling error_exit, which must not return: it jumps back to the
// setjmp in the function that called libjpeg. Everything that function owns lives in a
// Session on the heap, made before setjmp and never reassigned after it, so that the jump
// skips only libjpeg's own C frames and leaves no C++ object half-changed.
struct Session {
  jpeg_error_mgr errors{};
  std::jmp_buf jump{};
  std::string message;
  unsigned char* encoded = nullptr;  // jpeg_mem_dest's buffer, malloc'ed by libjpeg
  unsigned long encodedSize = 0;
  std::vector<std::uint8_t> pixels;
  ~Session() { std::free(encoded); }
};

Session& sessionOf(j_common_ptr info) {
  // `errors` is the first member, and info->err points at it.
  return *reinterpret_cast<Session*>(info->err);
}

[[noreturn]] void onError(j_common_ptr info) {
  Session& session = sessionOf(info);
  char buffer[JMSG_LENGTH_MAX] = {};
  (*info->err->format_message)(info, buffer);
  session.message = buffer;
  std::longjmp(session.jump, 1);
}

void onMessage(j_common_ptr info, int level) {
  // Warnings (level -1) mean damaged data that libjpeg would paper over: refuse it. Trace
  // messages (level >= 0) are dropped rather than printed.
  if (level < 0) onError(info);
}

void attachErrors(Session& session, jpeg_common_struct* info) {
  info->err = jpeg_std_error(&session.errors);
  session.errors.error_exit = onError;
  session.errors.emit_message = onMessage;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> jpegEncode(const Image& image, double quality) {
  const auto session = std::make_unique<Session>();
  const auto compress = std::make_unique<jpeg_compress_struct>();
  attachErrors(*session, reinterpret_cast<jpeg_common_struct*>(compress.get()));
  if (setjmp(session->jump) != 0) {
    jpeg_destroy_compress(compress.get());
    return std::nullopt;
  }
  jpeg_create_compress(compress.get());
  jpeg_mem_dest(compress.get(), &session->encoded, &session->encodedSize);
  compress->image_width = image.width();
  compress->image_height = image.height();
  compress->input_components = 4;
  compress->in_color_space = JCS_EXT_RGBX;  // the alpha byte is skipped
  jpeg_set_defaults(compress.get());
  const double clamped = std::isnan(quality) ? 0.0 : std::clamp(quality, 0.0, 1.0);
  jpeg_set_quality(compress.get(), static_cast<int>(std::lround(clamped * 100.0)), TRUE);
  jpeg_start_compress(compress.get(), TRUE);
  const std::uint8_t* pixels = image.rgba().data();
  const std::size_t stride = static_cast<std::size_t>(image.width()) * 4;
  while (compress->next_scanline < compress->image_height) {
    JSAMPROW row = const_cast<JSAMPROW>(pixels + compress->next_scanline * stride);
    jpeg_write_scanlines(compress.get(), &row, 1);
  }
  jpeg_finish_compress(compress.get());
  jpeg_destroy_compress(compress.get());
  return std::vector<std::uint8_t>(session->encoded, session->encoded + session->encodedSize);
}

Image jpegDecode(std::span<const std::uint8_t> bytes) {
  const auto session = std::make_unique<Session>();
  const auto decompress = std::make_unique<jpeg_decompress_struct>();
  attachErrors(*session, reinterpret_cast<jpeg_common_struct*>(decompress.get()));
  if (setjmp(session->jump) != 0) {
    jpeg_destroy_decompress(decompress.get());
    throw ErrorException(Error(std::string(kImageCodecErrorDomain), 2,
                               "The JPEG picture cannot be read: " + session->message));
  }
  jpeg_create_decompress(decompress.get());
  jpeg_mem_src(decompress.get(), bytes.data(), static_cast<unsigned long>(bytes.size()));
  jpeg_read_header(decompress.get(), TRUE);
  if (static_cast<std::uint64_t>(decompress->image_width) * decompress->image_height >
      kMaxDecodedPixels) {
    jpeg_destroy_decompress(decompress.get());
    throw ErrorException(Error(std::string(kImageCodecErrorDomain), 2,
                               "The JPEG picture cannot be read: too many pixels"));
  }
  decompress->out_color_space = JCS_EXT_RGBA;
  jpeg_start_decompress(decompress.get());
  const std::size_t stride = static_cast<std::size_t>(decompress->output_width) * 4;
  session->pixels.resize(stride * decompress->output_height);
  while (decompress->output_scanline < decompress->output_height) {
    JSAMPROW row = session->pixels.data() + decompress->output_scanline * stride;
    jpeg_read_scanlines(decompress.get(), &row, 1);
  }
  jpeg_finish_decompress(decompress.get());
  const Image image(decompress->output_width, decompress->output_height,
                    std::move(session->pixels));
  jpeg_destroy_decompress(decompress.get());
  return image;
}

}  // namespace qm::internal
