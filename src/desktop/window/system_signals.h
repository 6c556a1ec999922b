// Brings the signals that ask the program to end (SIGTERM, SIGINT, SIGHUP) into the event loop, so
// that the stores are closed as by the command to quit.
#pragma once

#include <QObject>

namespace carnetel::desktop {

// One at a time: the handlers are the process's.
class SystemSignals : public QObject {
  Q_OBJECT

 public:
  explicit SystemSignals(QObject* parent = nullptr);
  ~SystemSignals() override;

 Q_SIGNALS:
  void endRequested();

 private:
  void Read();

  int ends_[2] = {-1, -1};
};

}  // namespace carnetel::desktop
