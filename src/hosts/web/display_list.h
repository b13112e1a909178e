// What was drawn on a canvas, as numbers in a row: JavaScript plays them back in one call.
// A call per line, colour and word would cost more than the painting itself.
#pragma once

#include <string>
#include <vector>

#include "platform/graphics/canvas.h"

class DisplayList {
  public:
    bool isEmpty() const { return _numbers.empty(); }
    /// What was played back is forgotten.
    void clear();
    /// Plays everything into the browser's canvas of this id (see web_canvas.cpp).
    void play(int canvas) const;

    void save();
    void restore();
    void translate(CGFloat dx, CGFloat dy);
    void scale(CGFloat sx, CGFloat sy);
    void clip(const UIBezierPath& path, FillRule rule);
    void beginLayer();
    void endLayer(double alpha);
    void clearRect(CGRect rect);
    void fillRect(CGRect rect, UIColor color);
    void fill(const UIBezierPath& path, FillRule rule, UIColor color);
    void stroke(const UIBezierPath& path, CGFloat lineWidth, UIColor color);
    void drawPicture(const CGImage& image, CGRect rect);
    void drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                  NSTextAlignment alignment, bool singleLine);

  private:
    enum class Operation;
    void add(Operation operation);
    void add(CGRect rect);
    void add(UIColor color);
    void add(FillRule rule);
    void add(const UIBezierPath& path);
    void add(const std::string& text);

    std::vector<double> _numbers;
    /// UTF-8; the list names a text by where it begins and how long it is.
    std::string _texts;
    /// R, G, B, A each; the list names a picture by its address.
    std::vector<std::vector<uint8_t>> _pictures;
};
