#include <QDir>
#include <QFontInfo>
#include <QPainter>
#include <QRawFont>
#include <set>

#include "tests/pictures/walk.h"

namespace morva {
namespace {

constexpr int kSameColour = 8;   // a channel may be so far off: processors round differently
constexpr int kStrayPixels = 6;  // so many pixels may be further off
constexpr int kCell = 32;        // pixels of the layout; where fonts are drawn in another way, such cells are compared
constexpr int kSameCell = 90;

/// What the pictures depend on beside the program: the toolkit, and the font as the system draws it.
QByteArray Here() {
  const QFont font = QApplication::font();
  const QByteArray version = QRawFont::fromFont(font).fontTable("head").mid(4, 8).toHex();
  return QByteArray("Qt ") + qVersion() + ", " + QFontInfo(font).family().toUtf8() + ' ' + version + '\n';
}

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QImage PictureOf(QWidget& seen) {
  QImage picture = seen.grab().toImage().convertToFormat(QImage::Format_RGB32);
  if (!seen.mask().isEmpty()) {
    QPainter painter(&picture);
    painter.setClipRegion(QRegion(seen.rect()) - seen.mask());
    painter.fillRect(seen.rect(), Qt::magenta);
  }
  picture.setDevicePixelRatio(1);
  return picture;
}

class Pictures : public Walk {
 protected:
  void SetUp() override {
    Walk::SetUp();
    const QString folder = QString("light-%1x").arg(Scale());
    approved_ = QDir(QString(MORVA_APPROVED) + "/" + folder);
    now_ = QDir("pictures/" + folder);
    now_.removeRecursively();
    for (const QDir& needed : {approved_, now_}) QDir().mkpath(needed.path());
    exact_ = Bytes(MadeWith()) == Here();
  }

  static int Scale() { return static_cast<int>(qApp->devicePixelRatio()); }
  QString MadeWith() const { return approved_.filePath("made-with.txt"); }

  void Judge(const std::string& name, QWidget& seen) {
    const QString file = QString::fromStdString(name) + ".png";
    EXPECT_TRUE(names_.insert(file).second) << name;
    const bool toolkits = qobject_cast<QMenu*>(&seen) != nullptr || qobject_cast<QMessageBox*>(&seen) != nullptr;
    if (!exact_ && !approving_ && toolkits) return;  // it lays them out by its fonts
    const QImage now = PictureOf(seen);
    const QImage approved = QImage(approved_.filePath(file)).convertToFormat(QImage::Format_RGB32);
    const bool same_size = approved.size() == now.size();
    const std::vector<QPoint> different = same_size ? Differences(now, approved) : std::vector<QPoint>();
    if (same_size && different.size() <= (exact_ ? kStrayPixels : 0)) return;
    if (approving_) return Save(now, approved_.filePath(file));
    const QString kept = now_.filePath(file);
    if (!same_size) {
      Save(now, kept);
      ADD_FAILURE() << name << (approved.isNull() ? " was never approved: " : " has another size than was approved: ")
                    << kept.toStdString();
      return;
    }
    QImage beside(now.width() * 3, now.height(), QImage::Format_RGB32);
    QPainter painter(&beside);
    for (int place = 0; place < 3; ++place) painter.drawImage(now.width() * place, 0, place == 0 ? approved : now);
    const int side = exact_ ? 1 : kCell * Scale();
    for (const QPoint point : different) {
      painter.fillRect(QRect(point * side + QPoint(now.width() * 2, 0), QSize(side, side)), Qt::red);
    }
    painter.end();
    Save(beside, kept);
    ADD_FAILURE() << name << " looks different: " << kept.toStdString()
                  << " shows what was approved, what is seen now, "
                  << "and in red where they differ, from " << different.front().x() * side << ", "
                  << different.front().y() * side << " on";
  }

  /// The pixels that are not alike, or where fonts are drawn in another way the cells.
  std::vector<QPoint> Differences(QImage now, QImage approved) const {
    if (!exact_) {
      for (QImage* whole : {&now, &approved}) {
        const QSize cells = whole->size() / (kCell * Scale()) + QSize(1, 1);
        *whole = whole->scaled(cells, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
      }
    }
    const auto near = [most = exact_ ? kSameColour : kSameCell](int a, int b) { return std::abs(a - b) <= most; };
    std::vector<QPoint> points;
    for (int y = 0; y < now.height(); ++y) {
      for (int x = 0; x < now.width(); ++x) {
        const QRgb a = now.pixel(x, y), b = approved.pixel(x, y);
        const bool alike = near(qRed(a), qRed(b)) && near(qGreen(a), qGreen(b)) && near(qBlue(a), qBlue(b));
        if (!alike) points.emplace_back(x, y);
      }
    }
    return points;
  }

  static void Save(const QImage& picture, const QString& path) {
    constexpr int kSmallest = 0;
    EXPECT_TRUE(picture.save(path, "PNG", kSmallest)) << path.toStdString();
  }

  const bool approving_ = qEnvironmentVariableIsSet("MORVA_APPROVE");
  bool exact_ = true;
  QDir approved_, now_;
  std::set<QString> names_;
};

TEST_F(Pictures, AreAsApproved) {
  if (approving_) {
    QFile made_with(MadeWith());
    ASSERT_TRUE(made_with.open(QFile::WriteOnly) && made_with.write(Here()) > 0);
  } else if (!exact_) {
    std::cout << "The pictures were approved with " << Bytes(MadeWith()).toStdString() << "and are drawn here with "
              << Here().toStdString() << "Only sizes, places and large shapes are compared.\n";
  }
  QApplication::setPalette(Scheme("light"));
  Go([this](const std::string& name, QWidget& seen) { Judge(name, seen); });
  for (const QString& file : approved_.entryList({"*.png"})) {
    if (names_.contains(file)) continue;
    if (!approving_ || !approved_.remove(file)) ADD_FAILURE() << file.toStdString() << " was not seen";
  }
}

}  // namespace
}  // namespace morva
