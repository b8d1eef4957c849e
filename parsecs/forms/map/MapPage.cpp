#include "parsecs/forms/map/MapPage.h"

#include <zlib.h>

#include <array>
#include <memory>
#include <new>
#include <string>

#include "parsecs/forms/map/MapFrame.h"

namespace plugincs {

namespace {

using Write = std::function<void(std::string_view)>;

// Bytes as text of 64 letters: nothing in it can be taken for HTML.
class Base64 {
  public:
    explicit Base64(const Write& write) : write_(write) {}

    void Put(std::string_view bytes) {
        for (const char byte : bytes) {
            bits_ = bits_ << 8U | static_cast<unsigned char>(byte);
            if (++count_ == 3) PutGroup(4);
        }
        write_(text_);
        text_.clear();
    }

    void Finish() {
        if (count_ == 0) return;
        bits_ <<= 8U * (3 - count_);
        PutGroup(count_ + 1);
        text_.resize((text_.size() + 3) / 4 * 4, '=');
        write_(text_);
    }

  private:
    void PutGroup(unsigned letters) {
        constexpr std::string_view kLetters =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        for (unsigned i = 0; i < letters; ++i) text_ += kLetters[bits_ >> (18 - 6 * i) & 63U];
        bits_ = 0;
        count_ = 0;
    }

    const Write& write_;
    std::string text_;
    std::uint32_t bits_ = 0;
    unsigned count_ = 0;  // bytes in `bits_`
};

class Deflater {
  public:
    explicit Deflater(Base64& out) : out_(out) {
        if (deflateInit(&stream_, kLevel) != Z_OK) throw std::bad_alloc();
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() { deflateEnd(&stream_); }

    void Put(std::string_view bytes, bool last) {
        // The library counts bytes in an unsigned int.
        constexpr std::size_t kMost = std::size_t{1} << 30U;
        for (; bytes.size() > kMost; bytes.remove_prefix(kMost)) {
            Run(bytes.substr(0, kMost), Z_NO_FLUSH);
        }
        Run(bytes, last ? Z_FINISH : Z_NO_FLUSH);
    }

  private:
    static constexpr int kLevel = 9;

    void Run(std::string_view bytes, int flush) {
        // The library does not write to its input; its C interface does not say so.
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        stream_.avail_in = static_cast<uInt>(bytes.size());
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(buffer_.data());
            stream_.avail_out = static_cast<uInt>(buffer_.size());
            deflate(&stream_, flush);
            out_.Put({buffer_.data(), buffer_.size() - stream_.avail_out});
        } while (stream_.avail_out == 0);
    }

    Base64& out_;
    z_stream stream_{};
    std::array<char, 1U << 16U> buffer_;
};

}  // namespace

void WriteMapPage(const std::vector<std::string_view>& data, const Write& write) {
    write(kMapHead);
    Base64 base64(write);
    const auto deflater = std::make_unique<Deflater>(base64);
    for (const std::string_view piece : data) deflater->Put(piece, false);
    deflater->Put({}, true);
    base64.Finish();
    write(kMapTail);
}

}  // namespace plugincs
