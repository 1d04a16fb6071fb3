// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Pictures/CustomPictures.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <memory>
#include <optional>

namespace cadorel {

class Preferences;

/// A picture of the listener's that the preferences keep. It is read when somebody first asks for it: no
/// start of the program waits for one that no screen shows. Main thread, where it is decoded as well, once:
/// who asks wants to know whether there is one, and pictures that were written here take about 3 ms. One that
/// another program put there may take as long as isSafeToDecode() allows: 30 ms for a JPEG of 16 million
/// pixels, 0.6 s for a PNG of 25 million.
class StoredPicture
{
public:
    /// Longer sides are made smaller while the picture is read; nothing larger was ever written.
    static constexpr int longestSide = 800;

    /// @param preferences outlives the picture
    /// @param shown gets the picture under @p name
    StoredPicture(Preferences &preferences, std::shared_ptr<CustomPictures> shown, const QString &name);

    /// Turns to what is stored under @p key. @return false when there was no picture and is none, for sure
    bool open(const QString &key);

    /// A null image when nothing is stored, or what does not decode.
    QImage image() const;
    /// `image://custom/<name>?<revision>`, another one for every picture; empty when there is none.
    QString address() const;

    /// Takes the picture, and stores it in that form; nothing leaves what is stored as it is.
    /// @return false when it is the same
    bool set(const QImage &image, const std::optional<QByteArray> &data);
    /// Forgets the picture, and what is stored. @return false when there was none, for sure
    bool clear();

private:
    void show(const QImage &image) const;

    Preferences &m_preferences;
    const std::shared_ptr<CustomPictures> m_shown;
    const QString m_name;
    QString m_key;
    /// Not there before somebody asks.
    mutable std::optional<QImage> m_image;
    int m_revision = 0;
};

} // namespace cadorel
