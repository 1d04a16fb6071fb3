// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/ContentTabModel.h"

#include <QObject>

namespace cadorel {

class Preferences;

/// What the root screen knows beyond the life of its items: which tabs there are. Which of them is selected
/// is the screen's own, and begins anew with it. Main thread.
class ContentViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool showWebDAVTab READ showWebDAVTab WRITE setShowWebDAVTab NOTIFY showWebDAVTabChanged)
    Q_PROPERTY(cadorel::ContentTabModel *visibleTabs READ visibleTabs CONSTANT)
public:
    static constexpr auto showWebDAVTabKey = "showWebDAVTab";

    /// Reads the stored choice; without one the tab is shown. @param preferences outlive this object
    explicit ContentViewModel(Preferences &preferences);

    /// Whether the tab of the servers is there.
    bool showWebDAVTab() const { return m_showWebDAVTab; }
    /// Stores the choice.
    void setShowWebDAVTab(bool shows);
    ContentTabModel *visibleTabs() { return &m_visibleTabs; }

Q_SIGNALS:
    void showWebDAVTabChanged();
    /// The listener wants to see the song that plays, in the list of the library.
    void miniPlayerLocateCurrentSong(const QString &songId, bool isWebDAV);

private:
    Preferences &m_preferences;
    bool m_showWebDAVTab;
    ContentTabModel m_visibleTabs;
};

} // namespace cadorel
