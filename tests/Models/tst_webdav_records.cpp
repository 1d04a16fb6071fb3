// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVConfig.h"
#include "Models/WebDAVError.h"
#include "Models/WebDAVPreset.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestWebDAVRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorsAreDescribed();
    void errorsAreEqualByCaseAndPayload();
    void presetsAreTheSevenRows();
    void presetsKeepTheirIds();
};

void TestWebDAVRecords::errorsAreDescribed()
{
    using Case = WebDAVError::Case;
    const QList<QPair<WebDAVError, QString>> rows = {
        {WebDAVError(Case::invalidConfig), u"配置无效"_s},
        {WebDAVError(Case::invalidURL), u"URL 格式错误"_s},
        {WebDAVError(Case::connectionFailed), u"连接失败，请检查网络和服务器地址"_s},
        {WebDAVError(Case::authenticationFailed), u"认证失败，请检查用户名和密码"_s},
        {WebDAVError::serverError(500), u"服务器错误 (HTTP 500)"_s},
        {WebDAVError(Case::parseError), u"响应解析失败"_s},
        {WebDAVError::networkError(u"超时"_s), u"网络错误: 超时"_s},
        {WebDAVError(Case::fileNotFound), u"文件不存在"_s},
        {WebDAVError(Case::accessDenied), u"访问被拒绝"_s},
    };
    for (const auto &[error, description] : rows) {
        QCOMPARE(error.description(), description);
        QCOMPARE(QString::fromUtf8(error.what()), description);
    }
}

void TestWebDAVRecords::errorsAreEqualByCaseAndPayload()
{
    QVERIFY(WebDAVError::serverError(500) == WebDAVError::serverError(500));
    QVERIFY(WebDAVError::serverError(500) != WebDAVError::serverError(502));
    QCOMPARE(WebDAVError::serverError(502).status(), 502);
    QVERIFY(WebDAVError::serverError(502).kind() == WebDAVError::Case::serverError);
    QVERIFY(WebDAVError::networkError(u"a"_s) != WebDAVError::networkError(u"b"_s));
    QCOMPARE(WebDAVError(WebDAVError::Case::accessDenied).status(), 0);
}

void TestWebDAVRecords::presetsAreTheSevenRows()
{
    struct Row
    {
        QString name, serverURL, basePath, description, icon;
        std::optional<int> port;
    };
    const QString https = u"https://"_s;
    const QString http = u"http://"_s;
    const QString endpoint = WebDAVConfig::jianguoyunPreset(u""_s).serverURL;
    const QList<Row> rows = {
        {u"坚果云"_s, endpoint, u"/dav"_s, u"国内知名云存储服务"_s, u"cloud.fill"_s, {}},
        {u"NextCloud"_s, https, u"/remote.php/dav/files/用户名"_s, u"开源私有云存储"_s, u"server.rack"_s, {}},
        {u"群晖 NAS (HTTPS)"_s, https, u"/"_s, u"群晖 NAS WebDAV 服务"_s,
         u"externaldrive.connected.to.line.below"_s, 5006},
        {u"群晖 NAS (HTTP)"_s, http, u"/"_s, u"群晖 NAS WebDAV 服务（不加密）"_s, u"externaldrive"_s, 5005},
        {u"威联通 QNAP"_s, https, u"/"_s, u"威联通 NAS WebDAV 服务"_s, u"externaldrive.fill"_s, {}},
        {u"Alist"_s, http, u"/dav"_s, u"Alist 文件列表程序"_s, u"folder.fill"_s, 5244},
        {u"自定义"_s, https, u"/"_s, u"手动配置 WebDAV 服务器"_s, u"gear"_s, {}},
    };
    const QList<WebDAVPreset> &presets = WebDAVPreset::presets();
    QCOMPARE(presets.size(), rows.size());
    for (qsizetype i = 0; i < rows.size(); ++i) {
        QCOMPARE(presets[i].name, rows[i].name);
        QCOMPARE(presets[i].serverURL, rows[i].serverURL);
        QCOMPARE(presets[i].port, rows[i].port);
        QCOMPARE(presets[i].basePath, rows[i].basePath);
        QCOMPARE(presets[i].description, rows[i].description);
        QCOMPARE(presets[i].icon, rows[i].icon);
    }
}

void TestWebDAVRecords::presetsKeepTheirIds()
{
    QSet<QUuid> ids;
    for (const WebDAVPreset &preset : WebDAVPreset::presets())
        ids.insert(preset.id);
    QCOMPARE(ids.size(), WebDAVPreset::presets().size());
    QVERIFY(ids.contains(WebDAVPreset::presets().first().id));
    QVERIFY(WebDAVPreset().id != WebDAVPreset().id);
}

QTEST_GUILESS_MAIN(TestWebDAVRecords)
#include "tst_webdav_records.moc"
