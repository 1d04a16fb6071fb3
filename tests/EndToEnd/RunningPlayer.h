// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <chrono>

namespace cadorel {

/// The real program in a home of its own, driven by mouse and keyboard, watched by what it prints.
class RunningPlayer
{
public:
    /// @param display name of the X server, @param home directory that lives longer than the player
    RunningPlayer(QString display, QString home);
    ~RunningPlayer();
    Q_DISABLE_COPY_MOVE(RunningPlayer)

    /// Where the player keeps the listener's music in a home.
    static QString musicFolder(const QString &home) { return home + QStringLiteral("/Music/Cadorel"); }

    /// Starts the program and waits for its first frame and the end of its first look into the music folder.
    bool start();
    /// Asks it to end, as a desktop that logs out does. @return whether it ended by itself and without error
    bool stop();
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }
    QProcessEnvironment environment() const { return m_environment; }
    /// Changes the environment; before start().
    void setVariable(const QString &name, const QString &value);

    /// Waits for a line of standard output that holds @p text, from the last match on.
    bool says(const QString &text, std::chrono::milliseconds limit = std::chrono::seconds(20));
    /// Everything that it printed so far, standard error too.
    const QString &output();

    void click(int x, int y);
    void rightClick(int x, int y);
    void key(const QString &name);
    /// Presses the keys of a text. A character that no key of the display has needs
    /// VirtualDisplay::addKeys().
    void type(const QString &text);
    QString windowTitle();
    /// Waits until nothing moves on the display.
    bool standsStill();

private:
    /// What the display shows.
    QByteArray picture() const;
    void press(const QString &button, int x, int y);
    bool control(const QStringList &arguments, QString *answer = nullptr);

    QProcess m_process;
    QProcessEnvironment m_environment;
    QString m_output;
    qsizetype m_matchedTo = 0;
};

} // namespace cadorel
