#include "ui/WicDecoder_win32.h"

#include <windows.h>

#include <wincodec.h>

#include <utility>

#include "platform/ComPtr_win32.h"
#include "platform/Disk_win32.h"
#include "ui/JpegPictureMaker.h"

namespace tobbin {
namespace {

// IWICBitmapSourceTransform: what can scale while it decodes. Not every header has it.
constexpr IID kSourceTransform = {
    0x3B16811B, 0x6A43, 0x4EC9, {0xB7, 0x13, 0x3D, 0x5A, 0x0C, 0x13, 0xB9, 0x40}};

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
    explicit WicDecoder(Reducing reducing) : m_reducing(reducing) {}

    bool Open(std::string_view bytes, int reduceBy) override {
        if (m_factory == nullptr)
            m_factory = MaybeCreate<IWICImagingFactory>(CLSID_WICImagingFactory);
        if (m_factory == nullptr)
            return false;
        m_stream = MaybeGet<IWICStream>([&](auto to) { return m_factory->CreateStream(to); });
        if (m_stream == nullptr || FAILED(m_stream->InitializeFromMemory(
                                       reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data())),
                                       static_cast<DWORD>(bytes.size()))))
            return false;
        const auto decoder = MaybeGet<IWICBitmapDecoder>([&](auto to) {
            return m_factory->CreateDecoderFromStream(m_stream.get(), nullptr,
                                                      WICDecodeMetadataCacheOnDemand, to);
        });
        if (decoder == nullptr)
            return false;
        m_frame =
            MaybeGet<IWICBitmapFrameDecode>([&](auto to) { return decoder->GetFrame(0, to); });
        return m_frame != nullptr && Reduce(reduceBy) && Convert();
    }

    PictureSize Size() const override {
        UINT width = 0;
        UINT height = 0;
        if (m_pixels == nullptr || FAILED(m_pixels->GetSize(&width, &height)))
            return {};
        return {static_cast<int>(width), static_cast<int>(height)};
    }

    bool Read(const PicturePart& part, std::span<std::uint32_t> pixels) override {
        const WICRect place = {part.x, part.y, part.width, part.height};
        if (FAILED(m_pixels->CopyPixels(&place, static_cast<UINT>(part.width) * 4,
                                        static_cast<UINT>(pixels.size() * 4),
                                        reinterpret_cast<BYTE*>(pixels.data()))))
            return false;
        for (std::uint32_t& pixel : pixels)
            pixel &= 0x00FFFFFF;
        return true;
    }

    void Close() override {
        m_pixels.reset();
        m_scaler.reset();
        m_frame.reset();
        m_stream.reset();
    }

 private:
    // The system's scaler lets the decoder do what it can; where the decoder can't, its own way is
    // coarser than ours.
    bool Reduce(int by) {
        if (by == 1 || (m_reducing == Reducing::WhileDecoding && !FrameReduces()))
            return true;
        UINT width = 0;
        UINT height = 0;
        m_scaler =
            MaybeGet<IWICBitmapScaler>([&](auto to) { return m_factory->CreateBitmapScaler(to); });
        if (m_scaler == nullptr || FAILED(m_frame->GetSize(&width, &height)))
            return false;
        const auto parts = static_cast<UINT>(by);
        return SUCCEEDED(m_scaler->Initialize(m_frame.get(), (width + parts - 1) / parts,
                                              (height + parts - 1) / parts,
                                              WICBitmapInterpolationModeFant));
    }

    bool FrameReduces() const {
        void* transform = nullptr;
        if (FAILED(m_frame->QueryInterface(kSourceTransform, &transform)))
            return false;
        static_cast<IUnknown*>(transform)->Release();
        return true;
    }

    bool Convert() {
        auto converter = MaybeGet<IWICFormatConverter>(
            [&](auto to) { return m_factory->CreateFormatConverter(to); });
        IWICBitmapSource* const source =
            m_scaler != nullptr ? static_cast<IWICBitmapSource*>(m_scaler.get()) : m_frame.get();
        if (converter == nullptr ||
            FAILED(converter->Initialize(source, GUID_WICPixelFormat32bppBGR,
                                         WICBitmapDitherTypeNone, nullptr, 0,
                                         WICBitmapPaletteTypeCustom)))
            return false;
        m_pixels = std::move(converter);
        return true;
    }

    Reducing m_reducing;
    ComPtr<IWICImagingFactory> m_factory;
    ComPtr<IWICStream> m_stream;
    ComPtr<IWICBitmapFrameDecode> m_frame;
    ComPtr<IWICBitmapScaler> m_scaler;
    ComPtr<IWICFormatConverter> m_pixels;
};

// COM is there for the decoder's whole life.
class SystemPictureMaker : public PictureMaker {
 public:
    explicit SystemPictureMaker(Reducing reducing)
        : m_maker(std::make_unique<SystemDisk>(), std::make_unique<WicDecoder>(reducing)) {}

    std::string Stamp(const std::string& path) override { return m_maker.Stamp(path); }
    Picture Make(const PictureRequest& request) override { return m_maker.Make(request); }

 private:
    // No messages are handled on this thread.
    ComApartment m_com{COINIT_MULTITHREADED};
    JpegPictureMaker m_maker;
};

}  // namespace

std::unique_ptr<PictureMaker> MakeSystemPictureMaker(Reducing reducing) {
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
    return std::make_unique<SystemPictureMaker>(reducing);
}

}  // namespace tobbin
