// Where a find goes from the page: the browser's own share sheet, else clipboard, download and mail.
// The browser answers later; until then its answers are awaited here by number.
#pragma once

#include <map>
#include <string>

#include "platform/host/share_destinations.h"

class WebShare : public ShareDestinations {
  public:
    std::vector<ShareDestination> destinations() override;
    void share(const ShareDestination& destination, const SharedContent& content, Answer answer) override;
    /// Where the browser shares files.
    std::optional<ShareDestination> systemSheet() override;

    /// The page is done with the share of that number.
    void answered(int number, const ShareOutcome& outcome);

  private:
    std::map<int, Answer> _answers;
    int _lastNumber = 0;
};
