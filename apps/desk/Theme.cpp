// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Theme.h"

#include "apps/desk/HostStyle.h"

#include <QApplication>
#include <QFile>
#include <QFont>

#include <algorithm>
#include <cmath>

namespace KODMS::Host {

namespace {

/// The desks ask for "Microsoft YaHei", which only Windows has. Elsewhere the
/// system would pick any font with these characters, often with Japanese shapes.
void installFonts(QApplication &app)
{
    const QString asked = QStringLiteral("Microsoft YaHei");
    QFont::insertSubstitutions(
        asked, {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Noto Sans SC"),
                QStringLiteral("Source Han Sans SC"), QStringLiteral("WenQuanYi Micro Hei"),
                QStringLiteral("PingFang SC")});
    QFont font(asked);
    font.setPixelSize(14);
    font.setStyleHint(QFont::SansSerif);
    app.setFont(font);
}

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

QPalette Theme::palette()
{
    QPalette p;
    p.setColor(QPalette::Window, Colour::Window);
    p.setColor(QPalette::WindowText, Colour::Text);
    p.setColor(QPalette::Base, Colour::Field);
    p.setColor(QPalette::AlternateBase, Colour::Panel);
    p.setColor(QPalette::Text, Colour::Text);
    p.setColor(QPalette::PlaceholderText, QColor(0xb4, 0xb4, 0xb4));
    p.setColor(QPalette::Button, Colour::Raised);
    p.setColor(QPalette::ButtonText, Colour::Text);
    p.setColor(QPalette::BrightText, Colour::Bad);
    p.setColor(QPalette::Highlight, Colour::Selection);
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Link, Colour::Link);
    p.setColor(QPalette::LinkVisited, Colour::Link);
    p.setColor(QPalette::ToolTipBase, QColor(0x2b, 0x2b, 0x2b));
    p.setColor(QPalette::ToolTipText, Colour::Text);
    p.setColor(QPalette::Light, QColor(0x70, 0x70, 0x70));
    p.setColor(QPalette::Midlight, QColor(0x64, 0x64, 0x64));
    p.setColor(QPalette::Mid, QColor(0x3a, 0x3a, 0x3a));
    p.setColor(QPalette::Dark, QColor(0x2e, 0x2e, 0x2e));
    p.setColor(QPalette::Shadow, QColor(0x1a, 0x1a, 0x1a));
    const QColor off(0xa6, 0xa6, 0xa6);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, off);
    p.setColor(QPalette::Disabled, QPalette::Highlight, Colour::Raised);
    return p;
}

void Theme::apply(QApplication &app)
{
    installFonts(app);
    app.setStyle(new HostStyle); // the application owns it
    app.setPalette(palette());
    QFile sheet(QStringLiteral(":/desk/host.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        app.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

double Theme::contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace KODMS::Host
