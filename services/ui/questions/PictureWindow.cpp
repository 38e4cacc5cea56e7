// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/PictureWindow.h"

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace KODMS::Services {

void showPicture(const QImage &image, const QString &fileName, QWidget &parent)
{
    auto *window = new QDialog(&parent);
    window->setObjectName(QStringLiteral("questionPicture"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(fileName);
    auto *label = new QLabel;
    label->setPixmap(QPixmap::fromImage(image));
    label->setAlignment(Qt::AlignCenter);
    label->setAccessibleName(fileName);
    auto *scroll = new QScrollArea(window);
    scroll->setWidgetResizable(true);
    scroll->setWidget(label);
    scroll->setFrameShape(QFrame::NoFrame);
    auto *column = new QVBoxLayout(window);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(scroll);
    constexpr int frame = 4;
    constexpr QSize least(240, 160);
    const QSize most = parent.screen()->availableSize() * 0.85;
    window->resize((image.size() + QSize(frame, frame)).boundedTo(most).expandedTo(least));
    window->show();
    window->activateWindow();
}

} // namespace KODMS::Services
