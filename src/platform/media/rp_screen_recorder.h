// The screen recorder, as far as the screen asks whether there is one.
// A host without an encoder says so before the main screen loads.
#pragma once

class RPScreenRecorder {
  public:
    static RPScreenRecorder& sharedRecorder();
    bool isAvailable() const { return _available; }
    void setAvailable(bool available) { _available = available; }

  private:
    bool _available = true;
};
