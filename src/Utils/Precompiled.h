// SPDX-License-Identifier: GPL-3.0-or-later
// What nearly every file reads, compiled once. Files still include what they use.
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QLoggingCategory>
#include <QObject>
#include <QPointer>
#include <QSharedData>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <vector>
