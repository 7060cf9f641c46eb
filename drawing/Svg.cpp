#include "drawing/Svg.h"

#include "drawing/Shapes.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace zdm {

namespace {

constexpr double kWidth = 1600.0;    // pixels of the picture
constexpr double kLongest = 20.0;    // width against height, and the other way round
constexpr double kStrokes = 1600.0;  // lines that would fill the picture
constexpr double kFontSize = 10.0;   // letters of that size are kCapital high
constexpr double kCapital = 7.2;

void AppendNumber(std::string* out, double number) {
  char digits[40];
  const auto [end, error] =
      std::to_chars(digits, digits + sizeof(digits), number, std::chars_format::general, 8);
  out->append(digits, end);
}

/// Y grows upwards in a drawing and downwards in a picture.
void AppendPoint(std::string* out, const XYZ& point) {
  AppendNumber(out, point.x);
  *out += ' ';
  AppendNumber(out, -point.y);
}

std::string ColourText(ULONG color) {
  char text[8];
  std::snprintf(text, sizeof(text), "#%06X", static_cast<unsigned>(color & 0xFFFFFF));
  return text;
}

std::string Marked(const WideString& text) {
  std::string marked;
  for (const char c : ToUtf8(text)) {
    if (c == '&') {
      marked += "&amp;";
    } else if (c == '<') {
      marked += "&lt;";
    } else if (c == '>') {
      marked += "&gt;";
    } else if (static_cast<unsigned char>(c) >= 0x20) {
      marked += c;
    }
  }
  return marked;
}

class Picture {
 public:
  void Add(const Shape& shape) {
    if (shape.kind == Shape::Kind::kText) {
      AddText(shape);
    } else {
      AddLine(shape);
    }
  }

  std::string Finish() const {
    const bool isEmpty = !(low_.x <= high_.x);
    const XYZ low = isEmpty ? XYZ{} : low_;
    const XYZ size = isEmpty ? XYZ{1, 1, 0} : high_ - low_;
    const double longest = std::max({size.x, size.y, 1e-9});
    const double width = std::max(size.x, longest / kLongest) + longest / 20;
    const double height = std::max(size.y, longest / kLongest) + longest / 20;
    const XYZ corner = {low.x + size.x / 2 - width / 2, low.y + size.y / 2 + height / 2, 0};
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"";
    AppendNumber(&svg, kWidth);
    svg += "\" height=\"";
    AppendNumber(&svg, std::ceil(kWidth * height / width));
    svg += "\" viewBox=\"";
    AppendPoint(&svg, corner);
    for (const double each : {width, height}) {
      svg += ' ';
      AppendNumber(&svg, each);
    }
    svg += "\">\n<rect x=\"";
    AppendNumber(&svg, corner.x);
    svg += "\" y=\"";
    AppendNumber(&svg, -corner.y);
    svg += "\" width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    svg += "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" stroke-width=\"";
    AppendNumber(&svg, longest / kStrokes);
    svg += "\" font-family=\"sans-serif\">\n" + body_ + "</g>\n</svg>\n";
    return svg;
  }

 private:
  void Extend(const XYZ& point) {
    low_ = {std::min(low_.x, point.x), std::min(low_.y, point.y), 0};
    high_ = {std::max(high_.x, point.x), std::max(high_.y, point.y), 0};
  }

  void AddLine(const Shape& shape) {
    const bool isArea = shape.kind == Shape::Kind::kArea;
    body_ += isArea ? "<path fill=\"" : "<path stroke=\"";
    body_ += ColourText(shape.color) + "\" d=\"M";
    for (std::size_t i = 0; i < shape.points.size(); ++i) {
      if (i != 0) body_ += i == 1 ? " L" : " ";
      AppendPoint(&body_, shape.points[i]);
      Extend(shape.points[i]);
    }
    body_ += isArea ? "Z\"/>\n" : "\"/>\n";
  }

  void AddText(const Shape& shape) {
    const double scale = 1.0 / kCapital;
    const XYZ along = shape.placement.GetRow(0) * scale;
    const XYZ up = shape.placement.GetRow(1) * scale;
    const XYZ& origin = shape.placement.GetTranslation();
    body_ += "<text fill=\"" + ColourText(shape.color) + "\" font-size=\"";
    AppendNumber(&body_, kFontSize);
    if (shape.anchor != 0.0) {
      body_ += shape.anchor == 1.0 ? "\" text-anchor=\"end" : "\" text-anchor=\"middle";
    }
    body_ += "\" transform=\"matrix(";
    AppendPoint(&body_, along);
    body_ += ' ';
    AppendPoint(&body_, -up);
    body_ += ' ';
    AppendPoint(&body_, origin);
    body_ += ")\">" + Marked(shape.text) + "</text>\n";
    Extend(origin);
    Extend(origin + shape.placement.GetRow(1));
  }

  std::string body_;
  XYZ low_ = {DBL_MAX, DBL_MAX, 0};
  XYZ high_ = {-DBL_MAX, -DBL_MAX, 0};
};

}  // namespace

std::string SvgOf(CZDMDrawing& drawing, CPIDManager& paths) {
  Picture picture;
  ShowShapes(drawing, paths, [&](const Shape& shape) { picture.Add(shape); });
  return picture.Finish();
}

}  // namespace zdm
