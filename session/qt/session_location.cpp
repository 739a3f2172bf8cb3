#include "session/qt/session_location.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>

#include "platform/system.h"
#include "session/last_session.h"

namespace varo {

namespace {

bool IsWritableFolder(const QString& folder) {
    const QFileInfo info(folder);
    return info.isDir() && info.isWritable();
}

}  // namespace

std::string ChooseSessionFolder(const std::string& executableFolder,
                                const std::string& configFolder) {
    const QString beside = QString::fromStdString(executableFolder);
    if (configFolder.empty() || IsWritableFolder(beside)) return executableFolder;
    // A folder that cannot be made shows up later as the usual write failure on exit.
    QDir().mkpath(QString::fromStdString(configFolder));
    return configFolder;
}

std::string UserConfigFolder() {
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (base.isEmpty()) return {};
    return (base + QStringLiteral("/varo")).toStdString();
}

std::string StartupSessionFilePath() {
    return SessionFilePath(ChooseSessionFolder(ExecutableFolder(), UserConfigFolder()));
}

}  // namespace varo
