#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/control.h"
#include "platform/surface.h"

namespace morva {

enum class Alignment { kLeft, kCenter };

/// A push button; the caption wraps where it is wider than the button, and "&" marks its access key.
class CommandButton : public Control {
 public:
  CommandButton();
  Property<std::string> Caption;
  void SetLayoutText(const std::string& text) override { Caption = text; }

 protected:
  bool TakesMouse() const override { return false; }
};

/// One of a group: among the option buttons of one container at most one has the Value True.
class OptionButton : public Control {
 public:
  OptionButton();
  Property<std::string> Caption;
  void PlaceOn(QWidget* parent, double left, double top, double width, double height) override;
  Property<bool> Value;  ///< assigning True takes it from the others of the group and fires Click, as the user's click
  void SetLayoutText(const std::string& text) override { Caption = text; }

 protected:
  bool TakesMouse() const override { return false; }
};

/// A titled box round other controls.
class Frame : public Control {
 public:
  Frame();
  Property<std::string> Caption;
  void SetLayoutText(const std::string& text) override { Caption = text; }
};

/// Plain text that the user can't change. Nothing in the text is taken for markup or an access key.
class Label : public Control {
 public:
  Label();
  Property<std::string> Caption;
  Property<Color> ForeColor{kButtonText};
  Property<bool> FontBold;
  Property<double> FontSize{8.25};  ///< points of 20 twips
  Property<Alignment> TextAlignment{Alignment::kLeft};
  void SetLayoutText(const std::string& text) override { Caption = text; }
};

/// One line of input, without a length limit.
class TextBox : public Control {
 public:
  TextBox();
  Property<std::string> Text;                  ///< UTF-8
  Property<int> SelStart, SelLength;           ///< characters; assigning SelStart puts the cursor there
  std::function<void(int KeyAscii)> KeyPress;  ///< each key with a character, before the text takes it; Enter as 13
  void SetLayoutText(const std::string& text) override { Text = text; }

 protected:
  bool TakesMouse() const override { return false; }
};

/// Read-only text of many lines with a vertical scroll bar.
class TextLog : public Control {
 public:
  static constexpr int kEnd = 2147483647;  ///< for SelStart: behind the last character, however many there are
  TextLog();
  Property<std::string> Text;  ///< UTF-8, lines apart by CR LF
  Property<int> SelStart;      ///< characters; the end brings the end of the text into view
  /// Adds at the end, in a time that does not grow with the text.
  void Append(const std::string& more);
  void SetLayoutText(const std::string& text) override { Text = text; }

 protected:
  bool TakesMouse() const override { return false; }

 private:
  void ShowLater();
  void ShowNow();
  std::string unshown_;  // appended, not on the screen yet
  bool show_pending_ = false;
};

/// A drawing surface with or without a sunken border of two pixels a side; X and Y of its mouse events and everything
/// drawn count from the corner inside the border. It can show a stored picture and hold other controls.
class PictureBox : public Control, public Surface {
 public:
  enum class Border { kNone, kSunken };
  explicit PictureBox(Border border = Border::kSunken);
  Property<Color> BackColor{kButtonFace};
  Property<std::string> Picture;  ///< name of a stored picture; the control takes the picture's size
  void SetLayoutText(const std::string& text) override { Picture = text; }
};

/// A drawing surface without a border.
class Panel : public PictureBox {
 public:
  Panel() : PictureBox(Border::kNone) {}
};

/// A stored picture, fitted into the control.
class Image : public Control {
 public:
  Image();
  Property<std::string> Picture;  ///< name of a stored picture
  void SetLayoutText(const std::string& text) override { Picture = text; }
};

/// A filled circle with a border of one pixel.
class CircleShape : public Control {
 public:
  CircleShape();
  Property<Color> BackColor{kWhite}, BorderColor{kBlack};
  void SetLayoutText(const std::string&) override {}
};

/// A horizontal rule; its Height is its thickness.
class Rule : public Control {
 public:
  Rule();
  Property<Color> BorderColor{kButtonShadow};
  void SetLayoutText(const std::string&) override {}
};

/// A list of lines with a number each, in the order of insertion. Nothing in a line is taken for markup.
class ListBox : public Control {
 public:
  ListBox();
  ~ListBox() override;
  Property<int> ListIndex{-1};  ///< the selected line, -1 for none; assigning scrolls it into view
  void AddItem(const std::string& text);
  void Clear();
  int ListCount() const;
  const std::string& List(int index) const;
  std::int32_t& ItemData(int index);
  void SetLayoutText(const std::string&) override {}

 protected:
  bool TakesMouse() const override { return false; }

 private:
  void ShowLater();
  void ShowNow();
  struct Item {
    std::string text;
    std::int32_t data = 0;
  };
  class Model;
  std::vector<Item> items_;
  std::unique_ptr<Model> model_;
  bool show_pending_ = false;
};

}  // namespace morva
