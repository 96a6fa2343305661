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
  if (seen.mask().isEmpty()) return picture;
  QImage masked(picture.size(), QImage::Format_RGB32);
  masked.setDevicePixelRatio(picture.devicePixelRatio());
  masked.fill(Qt::magenta);
  QPainter painter(&masked);
  painter.setClipRegion(seen.mask());
  painter.drawImage(0, 0, picture);
  return masked;
}

/// The pixels, or the cells, that are not alike; the pictures have one size.
std::vector<QPoint> Unlike(const QImage& one, const QImage& other, int most) {
  const auto near = [most](int a, int b) { return std::abs(a - b) <= most; };
  std::vector<QPoint> points;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const QRgb a = one.pixel(x, y), b = other.pixel(x, y);
      const bool alike = near(qRed(a), qRed(b)) && near(qGreen(a), qGreen(b)) && near(qBlue(a), qBlue(b));
      if (!alike) points.emplace_back(x, y);
    }
  }
  return points;
}

class Pictures : public Walk {
 protected:
  void SetUp() override {
    Walk::SetUp();
    const QString folder = QString("%1-%2x").arg(scheme_.c_str()).arg(qApp->devicePixelRatio());
    approved_ = QDir(QString(MORVA_APPROVED) + "/" + folder);
    now_ = QDir("pictures/" + folder);
    QDir().mkpath(approved_.path());
    now_.removeRecursively();
    QDir().mkpath(now_.path());
    exact_ = Bytes(MadeWith()) == Here();
  }

  QString MadeWith() const { return approved_.filePath("made-with.txt"); }

  void Judge(const std::string& name, QWidget& seen) {
    const QString file = QString::fromStdString(name) + ".png";
    EXPECT_TRUE(names_.insert(file).second) << name;
    const bool toolkits = qobject_cast<QMenu*>(&seen) != nullptr || qobject_cast<QMessageBox*>(&seen) != nullptr;
    if (!exact_ && !approving_ && toolkits) return;  // it lays them out by its fonts
    QImage now = PictureOf(seen);
    now.setDevicePixelRatio(1);
    QImage approved(approved_.filePath(file));
    approved.convertTo(QImage::Format_RGB32);
    const bool same_size = approved.size() == now.size();
    const std::vector<QPoint> different = same_size ? Differences(now, approved) : std::vector<QPoint>();
    if (same_size && different.size() <= (exact_ ? kStrayPixels : 0)) return;
    if (approving_) return Save(now, approved_.filePath(file));
    Save(now, now_.filePath(file));
    if (!same_size) {
      ADD_FAILURE() << name << " measures " << now.width() << " by " << now.height() << ", and "
                    << (approved.isNull() ? "was never approved" : "not what was approved") << ": "
                    << now_.filePath(file).toStdString();
      return;
    }
    QImage beside(now.width() * 3, now.height(), QImage::Format_RGB32);
    QPainter painter(&beside);
    painter.drawImage(0, 0, approved);
    painter.drawImage(now.width(), 0, now);
    painter.drawImage(now.width() * 2, 0, now.convertToFormat(QImage::Format_Grayscale8));
    const int side = exact_ ? 1 : Cell();
    for (const QPoint point : different) {
      painter.fillRect(QRect(point * side + QPoint(now.width() * 2, 0), QSize(side, side)), Qt::red);
    }
    painter.end();
    Save(beside, now_.filePath("difference-" + file));
    ADD_FAILURE() << name << " looks different: " << now_.filePath("difference-" + file).toStdString()
                  << " shows what was approved, what is seen now, and in red where they differ, from "
                  << different.front().x() * side << ", " << different.front().y() * side << " to "
                  << different.back().x() * side << ", " << different.back().y() * side;
  }

  int Cell() const { return static_cast<int>(kCell * qApp->devicePixelRatio()); }

  std::vector<QPoint> Differences(const QImage& now, const QImage& approved) const {
    if (exact_) return Unlike(now, approved, kSameColour);
    const auto cells = [this](const QImage& whole) {
      return whole.scaled(whole.size() / Cell() + QSize(1, 1), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    return Unlike(cells(now), cells(approved), kSameCell);
  }

  static void Save(QImage picture, const QString& path) {
    picture.setDevicePixelRatio(1);
    constexpr int kSmallest = 0;
    const QImage indexed = picture.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither | Qt::AvoidDither);
    const bool few = indexed.convertToFormat(QImage::Format_RGB32) == picture;
    EXPECT_TRUE((few ? indexed : picture).save(path, "PNG", kSmallest)) << path.toStdString();
  }

  const bool approving_ = qEnvironmentVariableIsSet("MORVA_APPROVE");
  const std::string scheme_ = qEnvironmentVariable("MORVA_SCHEME", "light").toStdString();
  bool exact_ = true;
  QDir approved_, now_;
  std::set<QString> names_;
};

TEST_F(Pictures, AreAsApproved) {
  if (approving_) {
    QFile made_with(MadeWith());
    ASSERT_TRUE(made_with.open(QFile::WriteOnly));
    made_with.write(Here());
  } else if (!exact_) {
    std::cout << "The pictures were approved with " << Bytes(MadeWith()).toStdString() << "and are drawn here with "
              << Here().toStdString() << "Only sizes, places and large shapes are compared.\n";
  }
  QApplication::setPalette(Scheme(scheme_));
  Go([this](const std::string& name, QWidget& seen) { Judge(name, seen); });
  for (const QString& file : approved_.entryList({"*.png"})) {
    if (names_.contains(file)) continue;
    if (!approving_ || !approved_.remove(file)) ADD_FAILURE() << file.toStdString() << " was not seen";
  }
}

}  // namespace
}  // namespace morva
