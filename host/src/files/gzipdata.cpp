// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "gzipdata.h"

#include <algorithm>
#include <climits>
#include <zlib.h>

namespace {

const int gzipWindow = 15 + 16; // zlib's way to say gzip instead of its own form
const int bufferStep = 1 << 20;
const int largestText = INT_MAX - 4096; // 2 GiB less what QByteArray needs itself
const qint64 unsuspiciousSize = 64 << 20;
const qint64 largestRatio = 300; // zeros reach a thousand, scenes some twenty
const int hostSystem = 11;       // what the host writes as its system

/// Ends zlib's stream with the scope.
class Stream
{
public:
    typedef int (*End)(z_stream*);

    explicit Stream(End end)
        : m_end(end)
    {
    }
    ~Stream() { m_end(&z); }

    z_stream z = {};

private:
    Q_DISABLE_COPY(Stream)

    End m_end;
};

Bytef* bytes(const QByteArray& data)
{
    // zlib takes its input without const.
    return reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
}

/// Judges what `consumed` bytes have unpacked to so far, so that a bomb is not unpacked to its end.
bool isTooLarge(qint64 size, qint64 consumed)
{
    return size >= largestText || (size > unsuspiciousSize && size / largestRatio > consumed);
}

/// Makes room for more output. The size doubles, so that each byte is copied once or twice.
void provideRoom(QByteArray* data, z_stream* z, int used)
{
    if (used == data->size())
        data->resize(
            static_cast<int>(std::min<qint64>(largestText, qint64(used) * 2 + bufferStep)));
    z->next_out = reinterpret_cast<Bytef*>(data->data()) + used;
    z->avail_out = static_cast<uInt>(std::min(data->size() - used, bufferStep));
}

} // namespace

bool isGzip(const QByteArray& data)
{
    return data.startsWith("\x1f\x8b");
}

bool gunzip(const QByteArray& packed, QByteArray* data, QString* error)
{
    const auto fail = [error](const char* cause) {
        *error = QString::fromLatin1(cause);
        return false;
    };
    Stream stream(inflateEnd);
    z_stream& z = stream.z;
    if (inflateInit2(&z, gzipWindow) != Z_OK)
        return fail("there is not enough memory to unpack it");
    z.next_in = bytes(packed);
    z.avail_in = static_cast<uInt>(packed.size());
    QByteArray text;
    int used = 0;
    for (;;) {
        provideRoom(&text, &z, used);
        const int result = inflate(&z, Z_NO_FLUSH);
        used = static_cast<int>(reinterpret_cast<char*>(z.next_out) - text.data());
        if (isTooLarge(used, packed.size() - static_cast<qint64>(z.avail_in)))
            return fail("it unpacks to more than a scene can be");
        if (result == Z_STREAM_END) {
            // A gzip file may have several parts, and some programs fill its last block with zeros.
            const Bytef* const rest = z.next_in;
            if (std::all_of(rest, rest + z.avail_in, [](Bytef byte) { return byte == 0; }))
                break;
            if (inflateReset(&z) != Z_OK)
                return fail("its packed form is damaged");
            continue;
        }
        if (result == Z_DATA_ERROR || result == Z_NEED_DICT || result == Z_STREAM_ERROR)
            return fail(z.msg && qstrcmp(z.msg, "incorrect data check") == 0
                    ? "its packed form is damaged: the checksum does not match"
                    : "its packed form is damaged");
        if (result == Z_MEM_ERROR)
            return fail("there is not enough memory to unpack it");
        if (result == Z_BUF_ERROR && z.avail_in == 0)
            return fail("its packed form is cut off");
    }
    text.resize(used);
    text.squeeze();
    *data = text;
    return true;
}

QByteArray gzip(const QByteArray& data)
{
    Stream stream(deflateEnd);
    z_stream& z = stream.z;
    const int memoryLevel = 8; // zlib's default
    if (deflateInit2(&z, Z_BEST_SPEED, Z_DEFLATED, gzipWindow, memoryLevel, Z_DEFAULT_STRATEGY)
        != Z_OK)
        return QByteArray();
    gz_header header = {};
    header.os = hostSystem;
    deflateSetHeader(&z, &header);
    z.next_in = bytes(data);
    z.avail_in = static_cast<uInt>(data.size());
    QByteArray packed;
    int used = 0;
    for (int result = Z_OK; result != Z_STREAM_END;) {
        if (used >= largestText)
            return QByteArray();
        provideRoom(&packed, &z, used);
        result = deflate(&z, Z_FINISH);
        used = static_cast<int>(reinterpret_cast<char*>(z.next_out) - packed.data());
    }
    packed.resize(used);
    return packed;
}
