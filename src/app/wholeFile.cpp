#include "app/wholeFile.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

/// Those that stand in the file. What the present user may do isn't among them: root may write to any file.
constexpr QFileDevice::Permissions writable =
    QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;

/// The context of the texts below for translations.
struct cWholeFile {
    Q_DECLARE_TR_FUNCTIONS(cWholeFile)
};

QString systemError() { return QString::fromStdString(std::system_category().message(errno)); }

QString notPlain() { return cWholeFile::tr("It is not a plain file."); }

/// Why what stands at `path` isn't to be replaced; empty if it may be.
QString objection(const QFileInfo& old) {
    if (old.isSymLink())
        return cWholeFile::tr("It is a symbolic link. Save under the name that it leads to: %1")
            .arg(old.symLinkTarget());
    if (!old.exists()) return {};
    if (!old.isFile()) return notPlain();
    // Replacing a file asks for no right to write to it; who took that right away meant to keep the file.
    if (!old.isWritable() || !(old.permissions() & writable)) return cWholeFile::tr("It is read-only.");
    return {};
}

/// A write that comes to the end of the disk takes what there is room for. Why it ends there is told by the next one.
bool writeAll(QFile& file, const QByteArray& text) {
    for (qint64 done = 0; done < text.size();) {
        const qint64 taken = file.write(text.constData() + done, text.size() - done);
        if (taken <= 0) return false;
        done += taken;
    }
    return true;
}

/// A new file is for its owner alone while it is to take the place of another.
bool openNew(QFile& file, const QFileInfo& old) {
    const auto mode = QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered;
    return old.exists() ? file.open(mode, QFileDevice::ReadOwner | QFileDevice::WriteOwner) : file.open(mode);
}

/// Gives a file the group and the permissions of another, special ones included. What an owner or a group may do that
/// can't be kept is for no other.
void takeAccess(int descriptor, const QFileInfo& old) {
    struct stat former {};
    if (stat(QFile::encodeName(old.filePath()).constData(), &former) != 0) return;
    constexpr mode_t allBits = 07777;
    mode_t bits = former.st_mode & allBits;
    if (former.st_uid != geteuid()) bits &= ~static_cast<mode_t>(S_ISUID);
    if (fchown(descriptor, static_cast<uid_t>(-1), former.st_gid) != 0) bits &= ~static_cast<mode_t>(S_IRWXG | S_ISGID);
    fchmod(descriptor, bits);
}

/// Writes all of a new file, down to the disk. @return what went wrong.
QString writeWhole(QFile& file, const QByteArray& text, const QFileInfo& old) {
    if (!openNew(file, old) || !writeAll(file, text)) return file.errorString();
    if (old.exists()) takeAccess(file.handle(), old);  // not sooner: writing takes the special permissions away
    if (fsync(file.handle()) != 0) return systemError();
    file.close();
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

/// A new name is kept by the folder that holds it.
void syncFolder(const QString& folder) {
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

QString readWholeFile(const QString& path, QByteArray& text) {
    if (path.contains(QChar::Null)) return cWholeFile::tr("There is a zero byte in its name.");
    const QFileInfo present(path);
    if (present.exists() && !present.isFile()) return notPlain();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return file.errorString();
    text = file.readAll();
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

QString replaceFile(const QString& path, const QByteArray& text) {
    const QFileInfo old(path);
    if (QString reason = objection(old); !reason.isEmpty()) return reason;

    QFile file(path + QStringLiteral(".new"));
    const QFileInfo stale(file.fileName());
    if (stale.isFile() || stale.isSymLink()) file.remove();  // left by a program that was ended, or laid as a trap
    QString failure = writeWhole(file, text, old);
    if (failure.isEmpty() &&
        std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
        failure = systemError();
    if (!failure.isEmpty()) {
        if (file.error() != QFileDevice::OpenError) file.remove();
        return failure;
    }
    syncFolder(old.absolutePath());
    return {};
}
