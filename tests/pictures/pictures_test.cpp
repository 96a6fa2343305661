#include <QDir>
#include <QFontInfo>
#include <QRawFont>
#include <set>

#include "tests/pictures/walk.h"

namespace morva {
namespace {

constexpr int kSameColour = 8;           // a channel may be so far off: processors round differently
constexpr std::size_t kStrayPixels = 6;  // so many pixels may be further off
constexpr int kCell = 32;  // pixels of the layout; where fonts are drawn in another way, such cells are compared
constexpr int kSameCell = 90;

/// What the pictures depend on beside the program: Qt, and the font as the system draws it.
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
    const bool of_qt = seen.inherits("QMenu") || seen.inherits("QMessageBox") || seen.inherits("QTipLabel");
    if (!exact_ && !approving_ && of_qt) return;  // laid out by fonts
    const QImage now = PictureOf(seen);
    const QImage approved = QImage(approved_.filePath(file)).convertToFormat(QImage::Format_RGB32);
    const std::vector<QRect> different = Differences(now, approved);
    if (different.size() <= (exact_ && approved.size() == now.size() ? kStrayPixels : 0)) return;
    if (approving_) return Save(now, approved_.filePath(file));
    Save(now, now_.filePath(file));
    ADD_FAILURE() << name << " looks different from " << different.front().x() << ", " << different.front().y()
                  << " on; what is seen now is in " << now_.filePath(file).toStdString();
  }

  /// The pixels that are not alike, or where fonts are drawn in another way the cells; all where sizes are not alike.
  std::vector<QRect> Differences(QImage now, QImage approved) const {
    if (now.size() != approved.size()) return {now.rect()};
    const int side = exact_ ? 1 : kCell * Scale();
    if (!exact_) {
      for (QImage* whole : {&now, &approved}) {
        const QSize cells = whole->size() / side + QSize(1, 1);
        *whole = whole->scaled(cells, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
      }
    }
    const auto near = [most = exact_ ? kSameColour : kSameCell](int a, int b) { return std::abs(a - b) <= most; };
    std::vector<QRect> places;
    for (int y = 0; y < now.height(); ++y) {
      for (int x = 0; x < now.width(); ++x) {
        const QRgb a = now.pixel(x, y), b = approved.pixel(x, y);
        const bool alike = near(qRed(a), qRed(b)) && near(qGreen(a), qGreen(b)) && near(qBlue(a), qBlue(b));
        if (!alike) places.emplace_back(x * side, y * side, side, side);
      }
    }
    return places;
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
