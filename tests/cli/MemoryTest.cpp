// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CliSupport.h"
#include "TestSupport.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <zlib.h>

namespace {

#ifdef __SANITIZE_ADDRESS__
const bool isSanitized = true;
#else
const bool isSanitized = false;
#endif

/// A run of `vireo` with so many KiB of address space.
Outcome runWithin(int kibibytes, const QStringList& arguments)
{
    QProcess process;
    const QString script = QStringLiteral("ulimit -v %1; exec \"$@\"").arg(kibibytes);
    process.start(QStringLiteral("/bin/sh"),
        QStringList(
            { QStringLiteral("-c"), script, QStringLiteral("sh"), QStringLiteral(VIREO_PROGRAM) })
            + arguments);
    EXPECT_TRUE(process.waitForFinished(120000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return Outcome { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

/// One part of a gzip file: so many zeros.
QByteArray packedZeros(int count)
{
    const QByteArray zeros(count, '\0');
    QByteArray packed(count / 500 + 100, '\0');
    z_stream stream = {};
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.constData()));
    stream.avail_in = static_cast<uInt>(zeros.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

class Memory : public testing::Test
{
protected:
    void SetUp() override
    {
        if (isSanitized)
            GTEST_SKIP() << "the sanitizer has its own idea of memory";
    }

    const QTemporaryDir m_folder;
};

} // namespace

TEST_F(Memory, aSceneLargerThanATextIsRefusedUnread)
{
    const QString path = m_folder.filePath(QStringLiteral("large.duf"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64(3) << 30));
    expectFailure(runWithin(400000, { QStringLiteral("surfaces"), path }), 1,
        { QStringLiteral("large.duf: it is larger than") });
}

TEST_F(Memory, aSceneWithoutEndIsRefused)
{
    const QString path = m_folder.filePath(QStringLiteral("endless.duf"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), path));
    expectFailure(runWithin(700000, { QStringLiteral("surfaces"), path }), 1,
        { QStringLiteral("endless.duf: there is not enough memory for it") });
}

TEST_F(Memory, aBombIsRefusedLongBeforeItsEnd)
{
    const QByteArray part = packedZeros(100 << 20);
    QByteArray bomb;
    for (int i = 0; i < 100; ++i)
        bomb += part;
    const QString path = writeFile(m_folder, QStringLiteral("bomb.duf"), bomb);
    expectFailure(runWithin(700000, { QStringLiteral("surfaces"), path }), 1,
        { QStringLiteral("bomb.duf: it unpacks to more than a scene can be") });
}

TEST_F(Memory, aNetworkThatDoesNotFitIsAFailureLikeOthers)
{
    QByteArray text = "{ \"a\": 1";
    for (int i = 0; i < 1500000; ++i)
        text += ",\"k" + QByteArray::number(i) + "\":\"0123456789\"";
    text += '}';
    const QString path = writeFile(m_folder, QStringLiteral("wide.sskn"), text);
    expectFailure(runWithin(250000, { QStringLiteral("export"), path }), 1,
        { QStringLiteral("there is not enough memory") });
}
