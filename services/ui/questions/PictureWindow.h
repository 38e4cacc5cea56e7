// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QImage;
class QString;
class QWidget;

namespace KODMS::Services {

/// Shows a picture in full, in a window that goes when it is closed, or with `parent`.
void showPicture(const QImage &image, const QString &fileName, QWidget &parent);

} // namespace KODMS::Services
