// The destinations as one table, and how each of them is reached.
// Pictures carry their place in the file, whichever way they leave.
#include "hosts/desktop/desktop_share.h"

#include <array>
#include <filesystem>
#include <optional>
#include <utility>

#include "hosts/desktop/helper_program.h"
#include "hosts/native/user_folders.h"
#include "platform/foundation/dispatch_queue.h"

namespace {

namespace fs = std::filesystem;
using Need = ShareDestination::Need;

constexpr double jpegQuality = 0.9;
constexpr std::chrono::milliseconds patience(3000);

/// A page on which the user posts. `parameters` of the link name what goes where.
struct WebPost {
    const char* name;
    const char* activityType;
    const char* title;
    ShareIcon icon;
    const char* page;
    const char* textParameter;
    const char* linkParameter;  ///< null where the text holds the link; a page that has one wants a link
};

constexpr std::array<WebPost, 3> webPosts{{
    {"facebook", "com.apple.UIKit.activity.PostToFacebook", "Facebook", ShareIcon::people,
     "https://www.facebook.com/sharer/sharer.php", "quote", "u"},
    {"twitter", "com.apple.UIKit.activity.PostToTwitter", "Twitter", ShareIcon::bubble,
     "https://twitter.com/intent/tweet", "text", "url"},
    {"whatsapp", "net.whatsapp.WhatsApp.ShareExtension", "WhatsApp", ShareIcon::chat,
     "https://api.whatsapp.com/send", "text", nullptr},
}};

std::string percentEncoded(const std::string& text) {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (isLetter || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '_' || c == '~') {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return encoded;
}

/// The one that came beside the text, or the one that ends it.
std::string linkOf(const SharedContent& content) {
    if (!content.link.empty()) return content.link;
    const std::size_t start = content.text.rfind("http");
    return start == std::string::npos ? std::string() : content.text.substr(start);
}

std::string addressOf(const WebPost& post, const SharedContent& content) {
    const bool isApart = post.linkParameter != nullptr;
    const std::string text = isApart ? content.text : content.textWithLink();
    std::string address = std::string(post.page) + "?" + post.textParameter + "=" + percentEncoded(text);
    if (isApart) address += std::string("&") + post.linkParameter + "=" + percentEncoded(linkOf(content));
    return address;
}

std::optional<std::string> picturesFolder() {
    return userFolder("XDG_PICTURES_DIR", "Pictures");
}

ShareOutcome savePicture(const SharedContent& content, bool asJPEG) {
    const auto folder = picturesFolder();
    const auto bytes = asJPEG ? UIImageJPEGRepresentation(content.image, jpegQuality)
                              : UIImagePNGRepresentation(content.image);
    if (!folder || !bytes) return {false, "There is no picture to save."};
    const NewFile file = writeNewFile(*folder, content.fileName(), asJPEG ? ".jpg" : ".png", *bytes);
    if (!file.error.empty()) return {false, "Cannot save: " + file.error + "."};
    return {true, "Saved in " + fs::path(*folder).filename().string()};
}

ShareOutcome outcomeOf(ProgramEnd end, const char* program) {
    if (end != ProgramEnd::failed) return {true, ""};
    return {false, std::string(program) + " could not be started."};
}

ShareOutcome sendMail(const SharedContent& content, const std::stop_token& stop) {
    std::vector<std::string> command{"xdg-email",     "--utf8", "--subject",
                                     content.subject, "--body", content.textWithLink()};
    if (!content.file.empty()) command.insert(command.end(), {"--attach", content.file});
    const auto folder = folderForHandingOver();
    const auto bytes = UIImagePNGRepresentation(content.image);
    if (folder && bytes) {
        const NewFile file = writeNewFile(*folder, content.fileName(), ".png", *bytes);
        if (!file.error.empty()) return {false, "Cannot attach the picture: " + file.error + "."};
        command.insert(command.end(), {"--attach", file.path});
    }
    return outcomeOf(runProgram(command, patience, stop), "The mail program");
}

ShareOutcome openInBrowser(const std::string& address, const std::stop_token& stop) {
    return outcomeOf(runProgram({"xdg-open", address}, patience, stop), "The browser");
}

}  // namespace

std::vector<ShareDestination> DesktopShare::destinations() {
    std::vector<ShareDestination> found{
        {"copy", "com.apple.UIKit.activity.CopyToPasteboard", "Copy", ShareIcon::copy, Need::anything}};
    if (picturesFolder()) {
        const char* const save = "com.apple.UIKit.activity.SaveToCameraRoll";
        found.push_back({"png", save, "Save picture", ShareIcon::picture, Need::picture});
        found.push_back({"jpeg", save, "Save as JPEG", ShareIcon::picture, Need::picture});
    }
    if (findProgram("xdg-email"))
        found.push_back({"mail", "com.apple.UIKit.activity.Mail", "Mail", ShareIcon::mail, Need::anything});
    if (!findProgram("xdg-open")) return found;
    for (const WebPost& post : webPosts)
        found.push_back({post.name, post.activityType, post.title, post.icon, Need::link});
    found.push_back({"browser", "zentaro.OpenInBrowser", "Open link", ShareIcon::browser, Need::link});
    return found;
}

void DesktopShare::share(const ShareDestination& destination, const SharedContent& content, Answer answer) {
    const std::string& name = destination.name;
    if (name == "copy") return copy(content, answer);
    if (name == "png" || name == "jpeg") {
        const auto save = [content, asJPEG = name == "jpeg"](const std::stop_token&) {
            return savePicture(content, asJPEG);
        };
        return inBackground(save, answer);
    }
    if (name == "mail")
        return inBackground([content](const std::stop_token& stop) { return sendMail(content, stop); },
                            answer);
    std::string address = content.link;
    for (const WebPost& post : webPosts) {
        if (name == post.name) address = addressOf(post, content);
    }
    inBackground([address](const std::stop_token& stop) { return openInBrowser(address, stop); }, answer);
}

void DesktopShare::copy(const SharedContent& content, const Answer& answer) {
    const std::string text = content.file.empty() ? content.textWithLink() : content.file;
    if (!_clipboard) {
        _window.setClipboardText(text);
        return answer({true, content.file.empty() ? "Text and link copied" : "The film's place copied"});
    }
    const auto offer = [content, text, clipboard = _clipboard.get()](const std::stop_token&) -> ShareOutcome {
        auto picture = UIImagePNGRepresentation(content.image);
        const bool isHeld = clipboard->offer(text, std::move(picture), content.file);
        return isHeld ? ShareOutcome{true, "Copied"} : ShareOutcome{false, "The clipboard does not answer."};
    };
    inBackground(offer, answer);
}

void DesktopShare::inBackground(Work work, const Answer& answer) {
    _background.run([work = std::move(work), answer](const std::stop_token& stop) {
        return [answer, outcome = work(stop)] { answer(outcome); };
    });
}
