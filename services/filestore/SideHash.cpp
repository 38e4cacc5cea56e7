// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/SideHash.h"

namespace KODMS::Services {

namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 20;
constexpr std::size_t PieceCount = 4;

} // namespace

SideHash::SideHash() : m_full(PieceCount), m_empty(PieceCount) {}

SideHash::~SideHash()
{
    m_full.close();
    if (m_thread.joinable())
        m_thread.join();
}

SideHash::Piece SideHash::emptyPiece()
{
    if (m_made < PieceCount) {
        ++m_made;
        return {std::vector<char>(PieceSize), 0};
    }
    return m_empty.pop().value_or(Piece());
}

void SideHash::add(Piece piece)
{
    if (m_thread.joinable()) {
        m_full.push(std::move(piece));
    } else if (m_first.bytes.empty()) {
        m_first = std::move(piece);
    } else {
        m_full.push(std::move(m_first));
        m_full.push(std::move(piece));
        m_thread = std::thread([this] { run(); });
    }
}

void SideHash::run()
{
    while (auto piece = m_full.pop()) {
        m_hash.add(piece->bytes.data(), piece->size);
        m_empty.push(std::move(*piece));
    }
}

QByteArray SideHash::finish()
{
    if (m_thread.joinable()) {
        m_full.finish();
        m_thread.join();
    } else {
        m_hash.add(m_first.bytes.data(), m_first.size);
    }
    return m_hash.finish();
}

} // namespace KODMS::Services
