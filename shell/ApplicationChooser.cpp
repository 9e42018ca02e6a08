#include "shell/ApplicationChooser.h"

// GLib's headers use "signals" as a name, which Qt defines as a keyword.
#pragma push_macro("signals")
#undef signals
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#pragma pop_macro("signals")

#include "support/SystemLog.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <cstring>
#include <memory>

namespace tallyvox {

namespace {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using AppInfo = std::unique_ptr<GAppInfo, GObjectUnref>;

struct AppList {
    GList* list;
    explicit AppList(GList* apps) : list(apps) {}
    AppList(const AppList&) = delete;
    AppList& operator=(const AppList&) = delete;
    ~AppList() { g_list_free_full(list, g_object_unref); }
};

QString idOf(GAppInfo* app)
{
    const char* id = app ? g_app_info_get_id(app) : nullptr;
    return id ? QString::fromUtf8(id) : QString();
}

struct Strings {
    gchar** list = nullptr;
    ~Strings() { g_strfreev(list); }
};

// Whether the entry starts Tallyvox, whatever its name: its Exec line runs a program called
// tallyvox, or this very program, directly or through env.
bool runsTallyvox(GAppInfo* app)
{
    const char* commandLine = app ? g_app_info_get_commandline(app) : nullptr;
    Strings argv;
    if (commandLine == nullptr || !g_shell_parse_argv(commandLine, nullptr, &argv.list, nullptr)) {
        return false;
    }
    gchar** word = argv.list;
    const auto baseName = [](const char* path) {
        return QFileInfo(QFile::decodeName(path)).fileName();
    };
    if (*word != nullptr && baseName(*word) == QLatin1String("env")) {
        // env's options and the variables it sets come before the program.
        for (++word; *word != nullptr && (std::strchr(*word, '=') || **word == '-'); ++word) {
        }
    }
    if (*word == nullptr) {
        return false;
    }
    if (baseName(*word) == QLatin1String("tallyvox")) {
        return true;
    }
    gchar* found = g_find_program_in_path(*word);
    const QString program = QFileInfo(QFile::decodeName(found ? found : *word)).canonicalFilePath();
    g_free(found);
    return !program.isEmpty() &&
           program == QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
}

} // namespace

ApplicationChooser::ApplicationChooser(QString ownDesktopId)
    : m_ownDesktopId(std::move(ownDesktopId))
{}

QString ApplicationChooser::applicationFor(const QString& mimeType) const
{
    const QByteArray type = mimeType.toUtf8();
    const AppInfo preferred(g_app_info_get_default_for_type(type.constData(), FALSE));
    QString preferredId = idOf(preferred.get());
    if (!preferredId.isEmpty() && preferredId != m_ownDesktopId && !runsTallyvox(preferred.get())) {
        return preferredId;
    }
    // In the order of the rules: added associations first, then the entries' own claims.
    const AppList recommended(g_app_info_get_recommended_for_type(type.constData()));
    for (GList* link = recommended.list; link; link = link->next) {
        auto* app = static_cast<GAppInfo*>(link->data);
        QString id = idOf(app);
        if (!id.isEmpty() && id != m_ownDesktopId && !runsTallyvox(app)) {
            return id;
        }
    }
    return {};
}

bool ApplicationChooser::open(const QUrl& url, const QString& mimeType) const
{
    const QString id = applicationFor(mimeType);
    if (id.isEmpty()) {
        return false;
    }
    const std::unique_ptr<GDesktopAppInfo, GObjectUnref> app(
        g_desktop_app_info_new(id.toUtf8().constData()));
    if (!app) {
        return false;
    }
    // A URI keeps a fragment; GIO turns it into a path for applications that take files.
    QByteArray uri = url.toEncoded();
    GList uris{uri.data(), nullptr, nullptr};
    GError* error = nullptr;
    const bool started = g_app_info_launch_uris(G_APP_INFO(app.get()), &uris, nullptr, &error);
    if (!started) {
        systemLog(QStringLiteral("Could not start %1: %2")
                      .arg(id, QString::fromUtf8(error ? error->message : "")));
        g_clear_error(&error);
    }
    return started;
}

bool showInFileManager(const QString& path)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return false;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded())} << QString();
    // The file manager may first have to be started by the bus: never wait for it.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [path](QDBusPendingCallWatcher* finished) {
                         if (finished->isError()) {
                             systemLog(QStringLiteral("No file manager showed %1: %2")
                                           .arg(path, finished->error().message()));
                         }
                         finished->deleteLater();
                     });
    return true;
}

} // namespace tallyvox
