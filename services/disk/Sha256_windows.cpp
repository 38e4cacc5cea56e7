// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Sha256.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

#include <windows.h>

#include <bcrypt.h>

namespace KODMS::Services {

namespace {

constexpr ULONG HashSize = 32;
constexpr qint64 LargestPiece = qint64{1} << 30;

/// Hashing memory can only fail for want of memory.
void require(NTSTATUS result)
{
    if (result < 0)
        qFatal("SHA-256 is not available: out of memory");
}

/// The system's implementation, looked for once.
class Algorithm {
public:
    Algorithm()
    {
        require(::BCryptOpenAlgorithmProvider(&m_handle, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    }

    ~Algorithm() { ::BCryptCloseAlgorithmProvider(m_handle, 0); }

    Q_DISABLE_COPY_MOVE(Algorithm)

    static BCRYPT_ALG_HANDLE handle()
    {
        static const Algorithm only;
        return only.m_handle;
    }

private:
    BCRYPT_ALG_HANDLE m_handle = nullptr;
};

} // namespace

struct Sha256::Context {
    BCRYPT_HASH_HANDLE hash = nullptr;

    Context()
    {
        require(::BCryptCreateHash(Algorithm::handle(), &hash, nullptr, 0, nullptr, 0, 0));
    }

    ~Context() { ::BCryptDestroyHash(hash); }

    Q_DISABLE_COPY_MOVE(Context)
};

Sha256::Sha256() : m_context(std::make_unique<Context>()) {}

Sha256::Sha256(Sha256 &&) noexcept = default;
Sha256 &Sha256::operator=(Sha256 &&) noexcept = default;
Sha256::~Sha256() = default;

void Sha256::add(const char *data, qint64 size)
{
    // The interface is older than const; it only reads.
    auto *bytes = reinterpret_cast<UCHAR *>(const_cast<char *>(data));
    while (size > 0) {
        const auto piece = static_cast<ULONG>(std::min(size, LargestPiece));
        require(::BCryptHashData(m_context->hash, bytes, piece, 0));
        bytes += piece;
        size -= piece;
    }
}

QByteArray Sha256::finish()
{
    std::array<UCHAR, HashSize> bytes{};
    require(::BCryptFinishHash(m_context->hash, bytes.data(), HashSize, 0));
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), HashSize).toHex();
}

QByteArray Sha256::of(const QByteArray &data)
{
    Sha256 hash;
    hash.add(data.constData(), data.size());
    return hash.finish();
}

QByteArray Sha256::libraryVersion()
{
    return {};
}

} // namespace KODMS::Services
