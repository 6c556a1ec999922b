// A number with its unit, "2,05 cm", that is stepped by arrows or typed. What was typed is read by
// a rule of its own, which may make something else of a text than the value it stands for: so only
// a text that the user has edited is read, never one that is merely left.
#pragma once

#include <QSpinBox>
#include <functional>
#include <string>
#include <string_view>

namespace carnetel::desktop {

class UnitSpin : public QSpinBox {
  Q_OBJECT

 public:
  struct Rule {
    int least = 0;  // for the arrows; a text may come to 0 all the same
    int most = 0;
    std::function<std::string(int value)> text;
    std::function<int(std::string_view typed)> read;
  };
  // `name` becomes the object name.
  UnitSpin(const QString& name, Rule rule, QWidget* parent);

  void stepBy(int steps) override;

 protected:
  [[nodiscard]] QString textFromValue(int value) const override;
  [[nodiscard]] int valueFromText(const QString& text) const override;
  QValidator::State validate(QString& text, int& position) const override;
  [[nodiscard]] StepEnabled stepEnabled() const override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  Rule rule_;
};

}  // namespace carnetel::desktop
