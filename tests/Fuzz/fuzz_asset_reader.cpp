// SPDX-License-Identifier: GPL-3.0-or-later
// Reads any bytes as an audio file. Start it with a folder of real files as its corpus:
//   build/fuzz/fuzz_asset_reader -max_len=200000 CORPUS
#include "Platform/Linux/Tags/FileAssetReader.h"

#include <cmath>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace cadorel;

namespace {

void readEverything(AssetMetadata &asset)
{
    for (const bool precise : {false, true}) {
        const auto seconds = asset.duration(precise);
        if (seconds && (!std::isfinite(*seconds) || *seconds <= 0))
            std::abort();
    }
    const auto common = asset.commonMetadata();
    const auto all = asset.metadata();
    if (common.has_value() != all.has_value())
        std::abort();
    for (const auto &item : all.value_or(MetadataItems())) {
        (void)item->key();
        (void)item->identifier();
        (void)item->stringValue();
        (void)item->dataValue();
    }
    (void)asset.lyrics();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int file = memfd_create("song", MFD_CLOEXEC);
    if (file < 0 || write(file, data, size) != ssize_t(size))
        std::abort();
    readEverything(*FileAssetReader().open(u"/proc/self/fd/%1"_s.arg(file)));
    close(file);
    return 0;
}
