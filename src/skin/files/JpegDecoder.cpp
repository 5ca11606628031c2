// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/files/JpegDecoder.h"

#include <csetjmp>
#include <cstdio>
#include <vector>

#include <jpeglib.h>

namespace K7R
{

namespace
{

constexpr int numChannels = 3;

/** Every scan of a progressive picture goes over all of it, so a small file could keep the decoder for long. */
constexpr int maximumScans = 16;

struct Decoder
{
    jpeg_decompress_struct state;
    jpeg_error_mgr errors;
    jpeg_progress_mgr progress;
    std::jmp_buf failure;

    static Decoder& of (j_common_ptr common) { return *static_cast<Decoder*> (common->client_data); }

    [[noreturn]] static void fail (j_common_ptr common) { std::longjmp (of (common).failure, 1); }
    static void ignore (j_common_ptr) {}

    // Warnings are about data that is damaged or breaks off.
    static void hear (j_common_ptr common, int level)
    {
        if (level < 0)
            fail (common);
    }

    static void watch (j_common_ptr common)
    {
        if (common->is_decompressor && reinterpret_cast<j_decompress_ptr> (common)->input_scan_number > maximumScans)
            fail (common);
    }
};

/** Nothing in here has a destructor, because failures jump out of it.
    @returns whether the whole picture was read into `pixels`, which holds as many as it may have */
bool decode (Decoder& decoder, const void* data, size_t numBytes, juce::int64 maximumPixels,
             std::vector<JSAMPLE>& pixels)
{
    auto& state = decoder.state;
    state = {};
    state.err = jpeg_std_error (&decoder.errors);
    state.client_data = &decoder;
    decoder.errors.error_exit = Decoder::fail;
    decoder.errors.output_message = Decoder::ignore;
    decoder.errors.emit_message = Decoder::hear;

    if (setjmp (decoder.failure) != 0)
        return false;

    jpeg_create_decompress (&state);
    decoder.progress = {};
    decoder.progress.progress_monitor = Decoder::watch;
    state.progress = &decoder.progress;

    jpeg_mem_src (&state, static_cast<const unsigned char*> (data), static_cast<unsigned long> (numBytes));
    jpeg_read_header (&state, TRUE);

    if (static_cast<juce::int64> (state.image_width) > maximumPixels / state.image_height)
        return false;

    state.out_color_space = JCS_RGB;
    jpeg_start_decompress (&state);
    pixels.resize (static_cast<size_t> (numChannels) * state.output_width * state.output_height);

    while (state.output_scanline < state.output_height)
    {
        auto* row = pixels.data() + static_cast<size_t> (numChannels) * state.output_width * state.output_scanline;
        jpeg_read_scanlines (&state, &row, 1);
    }

    return true;
}

} // namespace

juce::Image decodeJpeg (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    Decoder decoder {};
    std::vector<JSAMPLE> pixels;
    juce::Image image;

    if (numBytes > 0 && decode (decoder, data, numBytes, maximumPixels, pixels))
    {
        const auto width = static_cast<int> (decoder.state.output_width);
        const auto height = static_cast<int> (decoder.state.output_height);
        image = juce::Image (juce::Image::RGB, width, height, false);
        const juce::Image::BitmapData bitmap (image, juce::Image::BitmapData::writeOnly);
        const auto* pixel = pixels.data();

        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x, pixel += numChannels)
                bitmap.setPixelColour (x, y, juce::Colour (pixel[0], pixel[1], pixel[2]));
    }

    jpeg_destroy_decompress (&decoder.state);
    return image;
}

} // namespace K7R
