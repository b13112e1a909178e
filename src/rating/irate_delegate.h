// What the rating request tells the app, and the two questions that the app may answer with a veto.
// Every callback is optional.
#pragma once

#include "platform/foundation/ns_error.h"

class iRateDelegate {
  public:
    virtual ~iRateDelegate() = default;
    virtual void iRateCouldNotConnectToAppStore(const NSErrorRef& /*error*/) {}
    virtual void iRateDidDetectAppUpdate() {}
    virtual bool iRateShouldPromptForRating() { return true; }
    virtual void iRateDidPromptForRating() {}
    virtual void iRateUserDidAttemptToRateApp() {}
    virtual void iRateUserDidDeclineToRateApp() {}
    virtual void iRateUserDidRequestReminderToRateApp() {}
    virtual bool iRateShouldOpenAppStore() { return true; }
    virtual void iRateDidOpenAppStore() {}
};
