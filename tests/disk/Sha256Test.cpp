// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Sha256.h"
#include "tests/support/TestMain.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QTest>

using KODMS::Services::Sha256;

namespace {

QByteArray randomBytes(QRandomGenerator &random, int size)
{
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

QByteArray reference(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
}

} // namespace

class Sha256Test : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void knownDigests_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QByteArray>("digest");
        QTest::newRow("nothing")
            << QByteArray()
            << QByteArray("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
        QTest::newRow("three letters")
            << QByteArray("abc")
            << QByteArray("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
        QTest::newRow("a million times a")
            << QByteArray(1000000, 'a')
            << QByteArray("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    }

    void knownDigests()
    {
        QFETCH(QByteArray, data);
        QFETCH(QByteArray, digest);
        QCOMPARE(Sha256::of(data), digest);
    }

    /// Each length around the block borders, where padding goes wrong.
    void everyLengthUpToThreeBlocks()
    {
        QRandomGenerator random(1);
        for (int size = 0; size <= 200; ++size) {
            const QByteArray data = randomBytes(random, size);
            QCOMPARE(Sha256::of(data), reference(data));
        }
    }

    void piecesOfAnySizeAddUp()
    {
        QRandomGenerator random(2);
        for (int round = 0; round < 200; ++round) {
            const QByteArray data = randomBytes(random, random.bounded(5000));
            Sha256 hash;
            for (int at = 0; at < data.size();) {
                const int piece = qMin(data.size() - at, random.bounded(1, 300));
                hash.add(data.constData() + at, piece);
                at += piece;
            }
            QCOMPARE(hash.finish(), reference(data));
        }
    }
};

KODMS_TEST_MAIN(Sha256Test, QCoreApplication)
#include "Sha256Test.moc"
