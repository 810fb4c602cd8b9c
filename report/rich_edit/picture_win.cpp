#include "report/rich_edit/picture_win.h"

#include <objidl.h>

#include <gdiplus.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "dialogs/handles_win.h"
#include "report/rich_edit/com_pointer_win.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

constexpr int kHundredthsOfMmPerInch = 2540;  // the unit of a metafile's frame
constexpr long kMaxSide = 32767;

struct MetafileCloser {
    static void Close(HENHMETAFILE metafile) noexcept { DeleteEnhMetaFile(metafile); }
};
using UniqueMetafile = UniqueHandle<HENHMETAFILE, MetafileCloser>;

class GdiplusSession {
  public:
    GdiplusSession() {
        const Gdiplus::GdiplusStartupInput input;
        started_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiplusSession() {
        if (started_) Gdiplus::GdiplusShutdown(token_);
    }
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    explicit operator bool() const { return started_; }

  private:
    ULONG_PTR token_ = 0;
    bool started_ = false;
};

std::string BytesOf(HENHMETAFILE metafile) {
    const UINT size = GetEnhMetaFileBits(metafile, 0, nullptr);
    std::string bytes(size, '\0');
    GetEnhMetaFileBits(metafile, size, reinterpret_cast<BYTE*>(bytes.data()));
    return bytes;
}

// Bytes of the header and the colour table of a device-independent bitmap; 0 when it is none.
std::size_t PixelsOffset(std::string_view dib, BITMAPINFOHEADER& header) {
    if (dib.size() < sizeof(header)) return 0;
    std::memcpy(&header, dib.data(), sizeof(header));
    const bool is_sane = header.biSize >= sizeof(header) && header.biSize <= 256 &&
                         header.biWidth > 0 && header.biWidth <= kMaxSide && header.biHeight != 0 &&
                         std::abs(header.biHeight) <= kMaxSide && header.biBitCount <= 32;
    if (!is_sane) return 0;
    std::size_t colors = header.biClrUsed;
    if (colors == 0 && header.biBitCount <= 8) colors = std::size_t{1} << header.biBitCount;
    if (colors > 256) return 0;
    const bool has_masks =
        header.biCompression == BI_BITFIELDS && header.biSize == sizeof(BITMAPINFOHEADER);
    return header.biSize + colors * sizeof(RGBQUAD) + (has_masks ? 3 * sizeof(DWORD) : 0);
}

std::size_t PixelBytes(const BITMAPINFOHEADER& header) {
    const auto bits = static_cast<std::size_t>(header.biWidth) * header.biBitCount;
    return (bits + 31) / 32 * 4 * static_cast<std::size_t>(std::abs(header.biHeight));
}

// A metafile of `size` pixels of 96 dpi that `draw` has drawn on.
template <typename Draw>
std::optional<RichPicture> RecordPicture(SIZE size, Draw draw) {
    const WindowDc screen(nullptr);
    const auto frame_side = [](LONG pixels) {
        return MulDiv(static_cast<int>(pixels), kHundredthsOfMmPerInch * kTwipsPerPixel,
                      kTwipsPerInch);
    };
    const RECT frame{0, 0, frame_side(size.cx), frame_side(size.cy)};
    HDC dc = CreateEnhMetaFileW(screen.get(), nullptr, &frame, nullptr);
    if (!dc) return std::nullopt;
    // The frame in pixels of the screen, whatever size it says to have.
    const auto pixels = [&screen](LONG side, int resolution, int millimetres) {
        return MulDiv(static_cast<int>(side), GetDeviceCaps(screen.get(), resolution),
                      100 * std::max(GetDeviceCaps(screen.get(), millimetres), 1));
    };
    const RECT area{0, 0, pixels(frame.right, HORZRES, HORZSIZE),
                    pixels(frame.bottom, VERTRES, VERTSIZE)};
    const bool drawn = draw(dc, area);
    const UniqueMetafile metafile(CloseEnhMetaFile(dc));
    if (!metafile || !drawn) return std::nullopt;
    return RichPicture{RichPicture::Format::kEnhancedMetafile, BytesOf(metafile.get()),
                       static_cast<int>(size.cx) * kTwipsPerPixel,
                       static_cast<int>(size.cy) * kTwipsPerPixel};
}

bool StretchBitmap(HDC dc, const RECT& area, SIZE size, const void* pixels,
                   const BITMAPINFO& info) {
    SetStretchBltMode(dc, COLORONCOLOR);
    return StretchDIBits(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, 0,
                         0, size.cx, size.cy, pixels, &info, DIB_RGB_COLORS,
                         SRCCOPY) != static_cast<int>(GDI_ERROR);
}

// Records a decoded picture; what is transparent in it becomes white.
std::optional<RichPicture> RecordImage(Gdiplus::Bitmap& image) {
    const SIZE size{static_cast<LONG>(image.GetWidth()), static_cast<LONG>(image.GetHeight())};
    if (size.cx <= 0 || size.cy <= 0 || size.cx > kMaxSide || size.cy > kMaxSide) {
        return std::nullopt;
    }
    HBITMAP handle = nullptr;
    if (image.GetHBITMAP(Gdiplus::Color(255, 255, 255), &handle) != Gdiplus::Ok) {
        return std::nullopt;
    }
    const UniqueBitmap bitmap(handle);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.cx, size.cy, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    std::string pixels(PixelBytes(info.bmiHeader), '\0');
    const WindowDc screen(nullptr);
    if (!GetDIBits(screen.get(), bitmap.get(), 0, static_cast<UINT>(size.cy), pixels.data(), &info,
                   DIB_RGB_COLORS)) {
        return std::nullopt;
    }
    return RecordPicture(size, [&](HDC dc, const RECT& area) {
        return StretchBitmap(dc, area, size, pixels.data(), info);
    });
}

std::optional<RichPicture> DecodeImage(const RichPicture& picture) {
    const GdiplusSession session;
    if (!session || picture.bytes.empty()) return std::nullopt;
    // Not CreateStreamOnHGlobal: some systems read beyond the end of its memory.
    const ComPointer<IStream> stream(
        SHCreateMemStream(reinterpret_cast<const BYTE*>(picture.bytes.data()),
                          static_cast<UINT>(picture.bytes.size())));
    if (!stream) return std::nullopt;
    Gdiplus::Bitmap image(stream.get());
    return image.GetLastStatus() == Gdiplus::Ok ? RecordImage(image) : std::nullopt;
}

HENHMETAFILE LoadMetafile(const RichPicture& picture) {
    const auto size = static_cast<UINT>(picture.bytes.size());
    const auto* bytes = reinterpret_cast<const BYTE*>(picture.bytes.data());
    return picture.format == RichPicture::Format::kWindowsMetafile
               ? SetWinMetaFileBits(size, bytes, nullptr, nullptr)
               : SetEnhMetaFileBits(size, bytes);
}

std::optional<RichPicture> DecodeMetafile(const RichPicture& picture) {
    const UniqueMetafile metafile(LoadMetafile(picture));
    if (!metafile) return std::nullopt;
    return RichPicture{RichPicture::Format::kEnhancedMetafile, BytesOf(metafile.get()), 0, 0};
}

std::optional<RichPicture> Decode(const RichPicture& picture) {
    switch (picture.format) {
        case RichPicture::Format::kEnhancedMetafile:
        case RichPicture::Format::kWindowsMetafile:
            return DecodeMetafile(picture);
        case RichPicture::Format::kPng:
        case RichPicture::Format::kJpeg:
            return DecodeImage(picture);
        case RichPicture::Format::kBitmap:
            return PictureOfBitmap(picture.bytes);
        case RichPicture::Format::kUnknown:
            break;
    }
    return std::nullopt;
}

}  // namespace

std::optional<RichPicture> PictureOfBitmap(std::string_view dib) {
    BITMAPINFOHEADER header{};
    const std::size_t offset = PixelsOffset(dib, header);
    const bool is_packed = header.biCompression == BI_RGB || header.biCompression == BI_BITFIELDS;
    if (offset == 0 || !is_packed || dib.size() < offset + PixelBytes(header)) return std::nullopt;
    const auto& info = *reinterpret_cast<const BITMAPINFO*>(dib.data());
    const SIZE size{header.biWidth, std::abs(header.biHeight)};
    return RecordPicture(size, [&](HDC dc, const RECT& area) {
        return StretchBitmap(dc, area, size, dib.data() + offset, info);
    });
}

std::optional<RichPicture> AsMetafile(const RichPicture& picture) {
    std::optional<RichPicture> result = Decode(picture);
    if (result && picture.width_twips > 0) result->width_twips = picture.width_twips;
    if (result && picture.height_twips > 0) result->height_twips = picture.height_twips;
    return result;
}

void DrawPicture(HDC dc, const RichPicture& picture, const RECT& place) {
    const std::optional<RichPicture> metafile = AsMetafile(picture);
    if (!metafile) return;
    const UniqueMetafile drawing(LoadMetafile(*metafile));
    if (drawing) PlayEnhMetaFile(dc, drawing.get(), &place);
}

}  // namespace tonvale
