// SPDX-License-Identifier: GPL-3.0-or-later
// Decodes any bytes as a song. Start it with a folder of real files as its corpus:
//   build/fuzz/fuzz_decoded_audio_file -max_len=200000 CORPUS
#include "Platform/EqualizerEngine/DecodedAudioFile.h"

#include <cstdlib>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;
using namespace cadorel;

namespace {

/// A few bytes may stand for hours of silence.
constexpr qint64 mostFrames = 500'000;
constexpr qint64 piece = 4096;

void readOn(AudioFile &file, std::vector<float> &samples)
{
    for (qint64 done = 0; done < mostFrames;) {
        const qint64 got = file.read(samples.data(), piece);
        if (got < 0 || got > piece || done + got > file.length())
            std::abort();
        if (got == 0)
            break;
        done += got;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int song = memfd_create("song", MFD_CLOEXEC);
    if (song < 0 || write(song, data, size) != ssize_t(size))
        std::abort();
    try {
        const auto file = DecodedAudioFile::open(QUrl::fromLocalFile(u"/proc/self/fd/%1"_s.arg(song)));
        if (file->length() <= 0)
            std::abort();
        std::vector<float> samples(size_t(piece) * size_t(file->processingFormat().channelCount));
        readOn(*file, samples);
        for (const qint64 place : {file->length() / 2, qint64(0), file->length() - 1}) {
            file->seek(place);
            if (file->read(samples.data(), 1) > 1)
                std::abort();
        }
    } catch (const std::runtime_error &) {
        // Most bytes are no song.
        (void)size;
    }
    close(song);
    return 0;
}
