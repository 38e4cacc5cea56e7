// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace KODMS::Robot {

/// Finds the end of a request while its bytes come in: the request has no length before it, it is
/// over when its outermost brace closes. Each byte is looked at once, however it arrives.
class RequestScanner {
public:
    static constexpr int MostBytes = 16 * 1024;
    static constexpr int DeepestLevel = 2;

    enum class State {
        Incomplete,
        Complete, ///< bytes() is one balanced object, perhaps with blanks around it
        Faulty    ///< fault() says why no further byte can mend it
    };

    /// Takes the next bytes. Nothing is taken any more once the state is not Incomplete, except
    /// that anything but blanks behind a complete object, in the same piece, makes it faulty.
    State feed(const char *data, int size);

    State state() const { return m_state; }

    bool isEmpty() const { return m_bytes.isEmpty(); }

    const QByteArray &bytes() const { return m_bytes; }

    /// Members of all objects, by their colons: more than there are keys when a key repeats.
    int members() const { return m_members; }

    const QString &fault() const { return m_fault; }

private:
    void take(char byte);
    void takeInText(char byte);
    void takeOutside(char byte);
    void open();
    void close();
    void fail(const QString &why);

    QByteArray m_bytes;
    QString m_fault;
    State m_state = State::Incomplete;
    int m_level = 0;
    int m_members = 0;
    bool m_inText = false;
    bool m_isEscaped = false;
};

} // namespace KODMS::Robot
