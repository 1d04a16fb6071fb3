// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QSet>
#include <QStringList>
#include <QUrl>

#include <expected>

namespace cadorel {

/// One folder of the player's own file picker: its folders first, then the files that may be chosen, hidden
/// ones left out. Folders are read on the thread pool; the rows of the last one stay until the next is there.
/// Main thread.
class FilePickerModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool folderMode READ folderMode WRITE setFolderMode NOTIFY folderModeChanged)
    Q_PROPERTY(bool singleFile READ singleFile WRITE setSingleFile NOTIFY singleFileChanged)
    Q_PROPERTY(QStringList extensions READ extensions WRITE setExtensions NOTIFY extensionsChanged)
    Q_PROPERTY(QString folder READ folder NOTIFY folderChanged)
    Q_PROPERTY(QString folderName READ folderName NOTIFY folderChanged)
    Q_PROPERTY(bool canGoUp READ canGoUp NOTIFY folderChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectedCountChanged)
public:
    enum Role {
        NameRole = Qt::UserRole + 1, // name: QString
        IsFolderRole,                // isFolder: bool
        IsSelectedRole               // isSelected: bool
    };

    /// Capitalised, because QML reads no other enumerators.
    enum class Place { Home, Music, Pictures, Downloads };
    Q_ENUM(Place)

    explicit FilePickerModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// A folder is to be chosen: files are shown for orientation and cannot be selected.
    bool folderMode() const { return m_folderMode; }
    void setFolderMode(bool folderMode);

    /// One file is to be chosen: another one takes its place.
    bool singleFile() const { return m_singleFile; }
    void setSingleFile(bool singleFile);

    /// Endings of the files that are shown, lower case, without the dot; at first those of the import.
    QStringList extensions() const { return m_extensions; }
    void setExtensions(const QStringList &extensions);

    /// Path of the folder shown; empty until the first one is opened.
    QString folder() const { return m_folder; }
    QString folderName() const;
    bool canGoUp() const;
    bool isLoading() const { return m_isLoading; }
    /// Why the folder cannot be read, in the listener's words; empty when it can.
    QString errorText() const { return m_errorText; }
    int count() const { return static_cast<int>(m_entries.size()); }
    int selectedCount() const { return static_cast<int>(m_selected.size()); }

    /// Shows a folder. The selection belongs to one folder and is dropped.
    Q_INVOKABLE void open(const QString &path);
    Q_INVOKABLE void openPlace(cadorel::FilePickerModel::Place place);
    /// Reads the folder shown anew, or opens the folder of @p place, else the home folder, when there is none
    /// yet; nothing is selected then.
    Q_INVOKABLE void restart(cadorel::FilePickerModel::Place place = cadorel::FilePickerModel::Place::Music);
    Q_INVOKABLE void up();
    /// Opens the folder of a row, or selects its file, or takes it out of the selection again.
    Q_INVOKABLE void activate(int row);

    /// What was chosen: the folder shown in folder mode, else the selected files in the order of the rows.
    Q_INVOKABLE QList<QUrl> chosenUrls() const;

Q_SIGNALS:
    void folderModeChanged();
    void singleFileChanged();
    void extensionsChanged();
    void folderChanged();
    void isLoadingChanged();
    void errorTextChanged();
    void countChanged();
    void selectedCountChanged();

private:
    struct Entry
    {
        QString name;
        bool isFolder = false;
    };
    using Listing = std::expected<QList<Entry>, QString>;

    static QString location(Place place);
    static Listing list(const QString &path, const QStringList &extensions);
    void show(const QString &path, const Listing &listing);
    void clearSelection();
    void setErrorText(const QString &text);
    void setLoading(bool loading);

    QStringList m_extensions;
    QString m_folder;
    QString m_errorText;
    QList<Entry> m_entries;
    QSet<int> m_selected;
    quint64 m_latestRequest = 0;
    bool m_folderMode = false;
    bool m_singleFile = false;
    bool m_isLoading = false;
};

} // namespace cadorel
