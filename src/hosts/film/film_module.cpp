// The codec that the program loads: FFmpeg behind the film interfaces.
// A module by itself: its hundred libraries would otherwise be loaded with every start of the app.
#include <cmath>
#include <utility>

#include "hosts/film/ffmpeg_reader.h"
#include "hosts/film/ffmpeg_writer.h"

namespace {

class FfmpegCodec : public FilmCodec {
  public:
    FfmpegCodec() { av_log_set_level(AV_LOG_QUIET); }

    std::unique_ptr<FilmWriter> makeWriter(int descriptor, const FilmFormat& format,
                                           std::string& error) override {
        auto writer = std::make_unique<FfmpegWriter>(descriptor, format);
        if (writer->open()) return writer;
        error = writer->error();
        return nullptr;
    }

    std::unique_ptr<FilmReader> makeReader(const std::string& path, std::string& error) override {
        auto reader = std::make_unique<FfmpegReader>();
        return reader->open(path, error) ? std::move(reader) : nullptr;
    }

    bool copyPart(const std::string& path, double from, double to, int descriptor,
                  std::string& error) override {
        FfmpegInput input;
        if (!input.open(path, error)) return false;
        FfmpegOutput output(descriptor);
        const bool copied = output.open() && copy(input, output, from, to);
        if (!copied) error = output.error();
        return copied;
    }

  private:
    static bool copy(FfmpegInput& input, FfmpegOutput& output, double from, double to) {
        const AVStream& source = *input.stream();
        AVStream* stream = output.addStream();
        if (!stream) return output.check(AVERROR(ENOMEM));
        stream->time_base = source.time_base;
        if (!output.check(avcodec_parameters_copy(stream->codecpar, source.codecpar))) return false;
        stream->codecpar->codec_tag = 0;
        // What lies between the picture that stands alone and the part's start has times below zero, which
        // the file's edit list passes over.
        output.format()->avoid_negative_ts = 0;
        if (!output.check(avformat_write_header(output.format(), nullptr))) return false;
        const bool copied = copyPackets(input, output, from, to);
        return output.check(av_write_trailer(output.format())) && copied;
    }

    static bool copyPackets(FfmpegInput& input, FfmpegOutput& output, double from, double to) {
        const AVRational base = input.stream()->time_base;
        const int64_t origin = std::max<int64_t>(input.stream()->start_time, 0);
        const auto ticks = [base, origin](double seconds) {
            return origin + std::llround(std::min(seconds, 1e7) * base.den / base.num);
        };
        const int64_t start = ticks(from);
        const int64_t end = ticks(to);
        const FfmpegPointer<AVPacket> packet(av_packet_alloc());
        if (!packet) return output.check(AVERROR(ENOMEM));
        if (start > origin) av_seek_frame(input.format(), input.stream()->index, start, AVSEEK_FLAG_BACKWARD);
        while (input.read(packet.get()) && packet->pts < end) {
            packet->duration = std::min(packet->duration, end - packet->pts);
            packet->pts -= start;
            packet->dts -= start;
            packet->stream_index = 0;
            packet->pos = -1;
            av_packet_rescale_ts(packet.get(), base, output.format()->streams[0]->time_base);
            if (!output.check(av_interleaved_write_frame(output.format(), packet.get()))) return false;
        }
        // A film whose end is missing is copied as far as it goes; one that the disk does not give is not.
        return output.check(input.format()->pb->error);
    }
};

}  // namespace

extern "C" [[gnu::visibility("default")]] FilmCodec* zentaroFilmCodec() {
    static FfmpegCodec codec;
    return &codec;
}
