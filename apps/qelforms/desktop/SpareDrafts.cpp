#include "SpareDrafts.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>
#include <optional>
#include <stdexcept>
#include <utility>

namespace qel::forms {
namespace {

constexpr quint32 mark = 0x51454C44;
constexpr auto version = QDataStream::Qt_6_4;

/// A name for a file that holds the name of another.
QString digest(const QString& path) {
  constexpr int length = 16;
  const QFileInfo file(path);
  const QString name = file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
  const QByteArray hash = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256);
  return QString::fromLatin1(hash.toHex().left(length));
}

std::optional<Draft> read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QDataStream stream(&file);
  stream.setVersion(version);
  quint32 found = 0;
  qint64 record = 0;
  qint64 revision = 0;
  QString title;
  QString body;
  stream >> found >> record >> revision >> title >> body;
  if (found != mark || stream.status() != QDataStream::Ok) return {};
  Draft draft;
  draft.record_id = record;
  draft.revision = revision;
  draft.title = title.toStdU16String();
  draft.body = body.toStdU16String();
  return draft;
}

}  // namespace

SpareDrafts::SpareDrafts(QString folder, const QString& database)
    : folder_(std::move(folder)), prefix_(digest(database) + QChar(u'-')) {
  own_ = folder_ + QChar(u'/') + prefix_ + QUuid::createUuid().toString(QUuid::Id128) +
         QStringLiteral(".draft");
}

void SpareDrafts::keep(const Draft& draft) {
  if (folder_.isEmpty()) throw std::runtime_error("there is no folder for drafts");
  QDir().mkpath(folder_);
  QSaveFile file(own_);
  const bool is_open = file.open(QIODevice::WriteOnly);
  QDataStream stream(&file);
  stream.setVersion(version);
  stream << mark << qint64{draft.record_id} << qint64{draft.revision}
         << QString::fromStdU16String(draft.title) << QString::fromStdU16String(draft.body);
  if (!is_open || stream.status() != QDataStream::Ok || !file.commit()) {
    throw std::runtime_error(file.errorString().toStdString());
  }
}

void SpareDrafts::drop() { QFile::remove(own_); }

void SpareDrafts::move_into(RecordStore& store) {
  if (folder_.isEmpty()) return;
  const QDir folder(folder_);
  for (const QString& name : folder.entryList({prefix_ + QStringLiteral("*.draft")}, QDir::Files)) {
    const QString path = folder.filePath(name);
    std::optional<Draft> draft = path == own_ ? std::nullopt : read(path);
    if (!draft) continue;
    store.keep_draft(*draft);
    QFile::remove(path);
  }
}

}  // namespace qel::forms
