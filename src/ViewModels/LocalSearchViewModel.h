// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/PacedRefresh.h"

#include <QObject>
#include <QPointer>
#include <QString>

namespace cadorel {

class CadorelViewModel;
class SongListModel;

/// The search of the listener's own library. It follows the text as it is typed, and the library as it
/// changes. Screens make it. Main thread.
class LocalSearchViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/CadorelViewModel.h")
    Q_MOC_INCLUDE("ViewModels/SongListModel.h")
    Q_PROPERTY(cadorel::CadorelViewModel *viewModel READ viewModel WRITE setViewModel NOTIFY viewModelChanged
                   REQUIRED)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(Content content READ content NOTIFY contentChanged)
    Q_PROPERTY(cadorel::SongListModel *songs READ songs CONSTANT)

public:
    /// What stands in the place of the list. Capitalised, because QML reads no other enumerators.
    enum class Content {
        Initial, ///< there is nothing to look for
        Results,
        Empty ///< nothing was found
    };
    Q_ENUM(Content)

    explicit LocalSearchViewModel(QObject *parent = nullptr);
    ~LocalSearchViewModel() override;
    Q_DISABLE_COPY_MOVE(LocalSearchViewModel)

    CadorelViewModel *viewModel() const { return m_viewModel; }
    /// Whose library is searched.
    void setViewModel(CadorelViewModel *viewModel);
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    Content content() const { return m_content; }
    SongListModel *songs() const { return m_songs; }

    /// Plays the song of a row, with the whole library as the queue.
    Q_INVOKABLE void playSongAt(int row);

Q_SIGNALS:
    void viewModelChanged();
    void searchTextChanged();
    void contentChanged();

private:
    void search();
    void setContent(Content content);
    void markCurrentSong();

    QPointer<CadorelViewModel> m_viewModel;
    QString m_searchText;
    Content m_content = Content::Initial;
    SongListModel *m_songs;
    /// For changes of the library: an import brings many.
    PacedRefresh m_refresh;
};

} // namespace cadorel
