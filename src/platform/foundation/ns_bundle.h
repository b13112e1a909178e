// The application's resource files: shaders, storyboard, icons, strings.
// The host says how to read them; nothing writes them.
#pragma once

#include <functional>
#include <optional>
#include <string>

class NSBundle {
  public:
    /// Reads a file by its name within the bundle ("Shader.fsh"); nothing if there is none.
    using Reader = std::function<std::optional<std::string>(const std::string& file)>;

    static NSBundle& mainBundle();

    void setReader(Reader reader) { _reader = std::move(reader); }
    /// The whole resource `name.type` as UTF-8 text.
    std::optional<std::string> stringForResource(const std::string& name, const std::string& type) const;

  private:
    Reader _reader;
};
