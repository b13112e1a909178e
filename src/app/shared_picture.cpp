// Two ways to be no picture of ours, each with its own line.
// Programs that edit or shrink pictures often drop the texts.
#include "app/shared_picture.h"

#include "platform/foundation/quoted_text.h"

std::variant<PicturedPlace, LinkMistake> readSharedPicture(const std::string& name,
                                                           const std::optional<PictureTexts>& texts) {
    constexpr const char* wanted = "; give one that Zentaro saved";
    if (!texts) return LinkMistake{quoted(name) + " is no PNG or JPEG picture" + wanted};
    const auto place = placeOfTexts(*texts);
    if (!place) return LinkMistake{quoted(name) + " does not say which view it shows" + wanted};
    return *place;
}
