// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/FileBytes.h"

#include <limits>

struct AVDictionary;
struct AVFormatContext;
struct AVIOContext;
struct AVPacket;
struct AVStream;

namespace cadorel {

/// A file of sound open in libavformat. Only containers of sound are tried, none that refers to other files
/// or to the network; what a container asks to be opened besides is refused. Belongs to one thread at a time.
class MediaInput
{
public:
    /// What is opened, and how.
    struct Request
    {
        std::shared_ptr<FileBytes> file;
        /// How many bytes are read at most; then the file seems to end.
        qint64 readLimit = std::numeric_limits<qint64>::max();
        /// Whether every other stream, a cover for instance, is passed over.
        bool soundOnly = false;
        /// Whether an MP4 is given as it was recorded, without its list of edits.
        bool unedited = false;
    };

    /// Why there is no input.
    struct Failure
    {
        enum Reason {
            /// No container of sound, or a damaged one.
            unrecognised,
            /// A container without a stream of sound.
            silent,
        };
        Reason reason;
        /// For diagnostics.
        QString text;
    };

    static std::expected<std::unique_ptr<MediaInput>, Failure> open(Request request);

    MediaInput(const MediaInput &) = delete;
    MediaInput &operator=(const MediaInput &) = delete;
    ~MediaInput();

    AVFormatContext *context() const { return m_context; }
    /// The stream of sound that is the song.
    AVStream *audio() const;
    /// The song's next packet, behind whatever is damaged. @return false at the end
    bool readSound(AVPacket &packet);
    /// How many bytes were read.
    qint64 bytesRead() const { return m_request.readLimit - m_left; }
    bool atLimit() const { return m_left == 0; }

private:
    explicit MediaInput(Request request);
    std::expected<void, Failure> start();
    static int read(void *self, unsigned char *to, int length);
    static int64_t seek(void *self, int64_t offset, int whence);
    static int refuse(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **);

    Request m_request;
    qint64 m_position = 0;
    qint64 m_left;
    AVIOContext *m_io = nullptr;
    AVFormatContext *m_context = nullptr;
    int m_audio = -1;
};

} // namespace cadorel
