#include "app/bitmap_file_win.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "dialogs/handles_win.h"

namespace tonvale {
namespace {

constexpr int kDepths[] = {1, 4, 8, 16, 24, 32};
constexpr WORD kFileType = 0x4D42;  // "BM"

struct BitmapDescription {
    BITMAPINFOHEADER header{};
    std::array<RGBQUAD, 256> colors{};
};

template <typename T>
std::string_view BytesOf(const T& value, std::size_t size = sizeof(T)) {
    return {reinterpret_cast<const char*>(&value), size};
}

}  // namespace

int DisplayDepth() {
    const WindowDc screen(nullptr);
    const int depth = GetDeviceCaps(screen.get(), BITSPIXEL) * GetDeviceCaps(screen.get(), PLANES);
    const auto* rounded = std::lower_bound(std::begin(kDepths), std::end(kDepths), depth);
    return rounded == std::end(kDepths) ? kDepths[std::size(kDepths) - 1] : *rounded;
}

std::string BitmapFile(HBITMAP picture, int depth) {
    BITMAP size{};
    if (!GetObjectW(picture, sizeof size, &size)) return {};
    const std::size_t row_bytes =
        (static_cast<std::size_t>(size.bmWidth) * static_cast<std::size_t>(depth) + 31) / 32 * 4;
    std::string rows(row_bytes * static_cast<std::size_t>(size.bmHeight), '\0');

    BitmapDescription description;
    BITMAPINFOHEADER& header = description.header;
    header.biSize = sizeof header;
    header.biWidth = size.bmWidth;
    header.biHeight = size.bmHeight;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(depth);
    header.biCompression = BI_RGB;
    const WindowDc screen(nullptr);
    if (GetDIBits(screen.get(), picture, 0, static_cast<UINT>(size.bmHeight), rows.data(),
                  reinterpret_cast<BITMAPINFO*>(&description), DIB_RGB_COLORS) != size.bmHeight) {
        return {};
    }
    const std::size_t color_count = depth <= 8 ? std::size_t{1} << depth : 0;
    header.biSizeImage = static_cast<DWORD>(rows.size());
    header.biClrUsed = static_cast<DWORD>(color_count);

    const std::size_t offset =
        sizeof(BITMAPFILEHEADER) + sizeof header + color_count * sizeof(RGBQUAD);
    const BITMAPFILEHEADER file_header{kFileType, static_cast<DWORD>(offset + rows.size()), 0, 0,
                                       static_cast<DWORD>(offset)};
    std::string bytes(BytesOf(file_header));
    bytes += BytesOf(header);
    bytes += BytesOf(description.colors, color_count * sizeof(RGBQUAD));
    return bytes += rows;
}

}  // namespace tonvale
