#include "ui/WicDecoder_win32.h"

#include <windows.h>

#include <wincodec.h>

#include <utility>

#include "platform/ComPtr_win32.h"
#include "platform/Disk_win32.h"
#include "ui/JpegPictureMaker.h"

namespace tobbin {
namespace {

// Calls a COM method whose last argument receives an object; null when it fails.
template <typename Interface, typename Call>
ComPtr<Interface> MaybeGet(Call call) {
    Interface* object = nullptr;
    if (FAILED(call(&object)))
        return nullptr;
    return ComPtr<Interface>(object);
}

class WicDecoder : public JpegDecoder {
 public:
    bool Open(std::string_view bytes) override {
        if (m_factory == nullptr)
            m_factory = MaybeCreate<IWICImagingFactory>(CLSID_WICImagingFactory);
        if (m_factory == nullptr)
            return false;
        m_stream = MaybeGet<IWICStream>([&](auto to) { return m_factory->CreateStream(to); });
        const auto decoder = MaybeGet<IWICBitmapDecoder>([&](auto to) {
            return m_factory->CreateDecoder(GUID_ContainerFormatJpeg, nullptr, to);
        });
        if (m_stream == nullptr || decoder == nullptr ||
            FAILED(m_stream->InitializeFromMemory(
                reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data())),
                static_cast<DWORD>(bytes.size()))) ||
            FAILED(decoder->Initialize(m_stream.get(), WICDecodeMetadataCacheOnDemand)))
            return false;
        m_frame =
            MaybeGet<IWICBitmapFrameDecode>([&](auto to) { return decoder->GetFrame(0, to); });
        return m_frame != nullptr;
    }

    PictureSize Size() const override { return SizeOf(*m_frame); }

    // Wine 8 reads no metadata of a JPEG picture: there all of them are upright.
    int Orientation() const override {
        const auto reader = MaybeGet<IWICMetadataQueryReader>(
            [&](auto to) { return m_frame->GetMetadataQueryReader(to); });
        PROPVARIANT value;
        PropVariantInit(&value);
        if (reader == nullptr ||
            FAILED(reader->GetMetadataByName(L"/app1/ifd/{ushort=274}", &value)))
            return 1;
        const int orientation = value.vt == VT_UI2 ? value.uiVal : 1;
        PropVariantClear(&value);
        return orientation;
    }

    bool Read(const PicturePart& part, PictureSize to, const PictureTurn& turn,
              PicturePixels& pixels) override {
        auto source = Scaled(part, to);
        if (turn.mirrorX)
            source = Turned(std::move(source), WICBitmapTransformFlipHorizontal);
        if (turn.mirrorY)
            source = Turned(std::move(source), WICBitmapTransformFlipVertical);
        if (turn.quarters != 0)
            source =
                Turned(std::move(source), static_cast<WICBitmapTransformOptions>(turn.quarters));
        auto converter = MaybeGet<IWICFormatConverter>(
            [&](auto out) { return m_factory->CreateFormatConverter(out); });
        if (source == nullptr || converter == nullptr ||
            FAILED(converter->Initialize(source.get(), GUID_WICPixelFormat32bppBGR,
                                         WICBitmapDitherTypeNone, nullptr, 0,
                                         WICBitmapPaletteTypeCustom)))
            return false;
        pixels = PicturePixels(SizeOf(*converter));
        if (FAILED(converter->CopyPixels(nullptr, static_cast<UINT>(pixels.size.width) * 4,
                                         static_cast<UINT>(pixels.pixels.size() * 4),
                                         reinterpret_cast<BYTE*>(pixels.pixels.data()))))
            return false;
        for (std::uint32_t& pixel : pixels.pixels)
            pixel &= 0x00FFFFFF;
        return true;
    }

    void Close() override {
        m_frame.reset();
        m_stream.reset();
    }

 private:
    using Source = ComPtr<IWICBitmapSource>;

    static PictureSize SizeOf(IWICBitmapSource& source) {
        UINT width = 0;
        UINT height = 0;
        if (FAILED(source.GetSize(&width, &height)))
            return {};
        return {static_cast<int>(width), static_cast<int>(height)};
    }

    // These return null when a step before them failed, or their own.
    Source Scaled(const PicturePart& part, PictureSize to) {
        const WICRect place = {part.x, part.y, part.width, part.height};
        auto clipper = MaybeGet<IWICBitmapClipper>(
            [&](auto out) { return m_factory->CreateBitmapClipper(out); });
        auto scaler = MaybeGet<IWICBitmapScaler>(
            [&](auto out) { return m_factory->CreateBitmapScaler(out); });
        if (clipper == nullptr || scaler == nullptr ||
            FAILED(clipper->Initialize(m_frame.get(), &place)) ||
            FAILED(scaler->Initialize(clipper.get(), static_cast<UINT>(to.width),
                                      static_cast<UINT>(to.height),
                                      WICBitmapInterpolationModeFant)))
            return nullptr;
        return scaler;
    }

    // Of a copy in memory: turning asks for the pixels in another order than they are decoded in.
    Source Turned(Source source, WICBitmapTransformOptions how) {
        const auto copy = MaybeGet<IWICBitmap>([&](auto out) {
            return m_factory->CreateBitmapFromSource(source.get(), WICBitmapCacheOnLoad, out);
        });
        auto rotator = MaybeGet<IWICBitmapFlipRotator>(
            [&](auto out) { return m_factory->CreateBitmapFlipRotator(out); });
        if (source == nullptr || copy == nullptr || rotator == nullptr ||
            FAILED(rotator->Initialize(copy.get(), how)))
            return nullptr;
        return rotator;
    }

    ComPtr<IWICImagingFactory> m_factory;
    ComPtr<IWICStream> m_stream;
    ComPtr<IWICBitmapFrameDecode> m_frame;
};

// COM is there for the decoder's whole life.
class SystemPictureMaker : public PictureMaker {
 public:
    std::string Stamp(const std::string& path) override { return m_maker.Stamp(path); }
    Picture Make(const PictureRequest& request) override { return m_maker.Make(request); }

 private:
    // No messages are handled on this thread.
    ComApartment m_com{COINIT_MULTITHREADED};
    JpegPictureMaker m_maker{std::make_unique<SystemDisk>(), std::make_unique<WicDecoder>()};
};

}  // namespace

std::unique_ptr<PictureMaker> MakeSystemPictureMaker() {
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
    return std::make_unique<SystemPictureMaker>();
}

}  // namespace tobbin
