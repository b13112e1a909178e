// The screen recorder, as far as the screen asks whether there is one.
// It is there unless somebody says otherwise before the main screen loads.
#pragma once

class RPScreenRecorder {
  public:
    static RPScreenRecorder& sharedRecorder();
    bool isAvailable() const { return _available; }
    void setAvailable(bool available) { _available = available; }

  private:
    bool _available = true;
};
