#include "drawing/Shapes.h"

#include "document/CZDispAttrib.h"
#include "drawing/CZDMDrawing.h"
#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingInsert.h"
#include "drawing/Colours.h"
#include "drawing/Curves.h"
#include "drawing/EntityValues.h"
#include "drawing/GroupCodes.h"
#include "drawing/Numbers.h"
#include "drawing/ShownText.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

#include <algorithm>
#include <numbers>

namespace zdm {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr ULONG kBlack = 0;
constexpr ULONG kWhite = 0xFFFFFF;
constexpr LONG kClosed = 1;
constexpr std::size_t kDeepest = 8;       // blocks of dimensions in each other
constexpr std::size_t kMostCells = 1024;  // rows times columns

double Capped(double angle) { return std::isfinite(angle) ? angle : 0.0; }

/// Where entities stand, and what they take over from the inserts that show them.
struct Scene {
  std::vector<GeMatrix> placements;  // several for rows and columns
  ULONG color = kBlack;              // by block
  IZCategory* layer = nullptr;       // of entities on layer 0; null in model space
  bool isVisible = true;
};

class Painter {
 public:
  Painter(CZDMDrawing& drawing, const std::function<void(const Shape&)>& show)
      : codec_(drawing.GetCodec()), show_(show) {}

  /// Inserts are left to their paths, unless `goes` into them.
  void ShowAll(IZDMObjMgr& manager, const Scene& scene, bool inModel, std::size_t depth) {
    for (LONGLONG pos = manager.GetValidHeadPosition(); pos != 0 && left_ != 0;) {
      Show(*manager.GetValidNext(pos), scene, inModel, depth);
    }
  }

  /// What the block of an insert is shown in.
  Scene Inside(IZDMObject& insert, const Scene& scene) {
    const EntityValues values(insert);
    Scene inside;
    inside.layer = LayerOf(insert, scene);
    inside.color = ColourOf(insert, values, scene);
    inside.isVisible = scene.isVisible && IsVisible(insert, values, scene);
    GeMatrix first;
    insert.GetTransform(first);
    const LONG columns = std::clamp(values.Integer(70, 1), LONG{1}, LONG{kMostCells});
    const LONG rows = std::clamp(values.Integer(71, 1), LONG{1}, LONG{kMostCells});
    const GeMatrix turn = GeMatrix::MakeRotation({}, {0, 0, 1}, Capped(values.Real(50)) * kDegree) *
                          ExtrusionFrame(values.Point(210, {0, 0, 1}));
    for (const GeMatrix& outer : scene.placements) {
      for (LONG row = 0; row < rows; ++row) {
        for (LONG column = 0; column < columns; ++column) {
          if (inside.placements.size() == kMostCells) return inside;
          const XYZ offset = {column * values.Real(44), row * values.Real(45), 0};
          inside.placements.push_back(
              first * GeMatrix::MakeTranslation(turn.TransformVector(offset)) * outer);
        }
      }
    }
    return inside;
  }

 private:
  static IZCategory* LayerOf(IZDMObject& entity, const Scene& scene) {
    IZCategory* own = entity.GetCategory();
    if (scene.layer == nullptr || own == nullptr) return own;
    Bstr name;
    own->GetName(name.Out());
    return name.View() == OLESTR("0") ? scene.layer : own;
  }

  static ULONG OnPaper(ULONG color) { return color == kWhite ? kBlack : color; }

  static ULONG ColourOf(IZDMObject& entity, const EntityValues& values, const Scene& scene) {
    if (const auto rgb = ParseLong(values.Text(420))) {
      return OnPaper(static_cast<ULONG>(*rgb) & kWhite);
    }
    const LONG number = values.Integer(62, kByLayer);
    if (number == kByBlock) return scene.color;
    if (number > 0 && number < kByLayer) return OnPaper(RgbOf(number));
    IZCategory* layer = LayerOf(entity, scene);
    auto* attribute =
        layer != nullptr ? dynamic_cast<CZDispAttrib*>(layer->GetProjectionDispAttrib()) : nullptr;
    return attribute != nullptr ? OnPaper(attribute->GetValues().color) : kBlack;
  }

  static bool IsVisible(IZDMObject& entity, const EntityValues& values, const Scene& scene) {
    IZCategory* layer = LayerOf(entity, scene);
    return values.Integer(60, 0) == 0 && (layer == nullptr || layer->IsCategoryVisible());
  }

  void Show(IZDMObject& entity, const Scene& scene, bool inModel, std::size_t depth) {
    const DrawingPart* part = PartOf(&entity);
    if (part == nullptr || !scene.isVisible) return;
    const EntityValues values(entity);
    if (inModel && values.Integer(67, 0) == 1) return;
    if (!IsVisible(entity, values, scene)) return;
    scene_ = &scene;
    color_ = ColourOf(entity, values, scene);
    const std::string_view type = part->Type();
    if (type == "INSERT") return ShowInsert(entity, scene, depth);
    if (type == "DIMENSION") return ShowDimension(entity, scene, depth);
    if (type == "POLYLINE") return ShowPolyline(entity, values);
    ShowEntity(type, values);
  }

  void ShowInsert(IZDMObject& insert, const Scene& scene, std::size_t depth) {
    ShowAll(*ViewAs<IZDMObjMgr>(&insert), scene, false, depth);  // the attributes
    CZDMDrawingBlock* block = BlockOf(insert);
    if (depth != 0 && depth < kDeepest && block != nullptr) {
      ShowAll(*block, Inside(insert, scene), false, depth + 1);
    }
  }

  /// The block of a dimension stands where it is.
  void ShowDimension(IZDMObject& dimension, const Scene& scene, std::size_t depth) {
    CZDMDrawingBlock* block = BlockOf(dimension);
    if (block == nullptr || depth >= kDeepest) return;
    Scene inside = scene;
    inside.layer = LayerOf(dimension, scene);
    inside.color = color_;
    ShowAll(*block, inside, false, depth + 1);
  }

  void ShowEntity(std::string_view type, const EntityValues& values) {
    const GeMatrix frame = ExtrusionFrame(values.Point(210, {0, 0, 1}));
    const XYZ at = values.Point(10);
    if (type == "LINE") {
      Line({at, values.Point(11)});
    } else if (type == "CIRCLE" || type == "ARC") {
      const bool isArc = type == "ARC";
      const double radius = values.Real(40);
      const double from = isArc ? std::remainder(values.Real(50), 360.0) * kDegree : 0.0;
      double to = isArc ? std::remainder(values.Real(51), 360.0) * kDegree : 2 * std::numbers::pi;
      if (to <= from) to += 2 * std::numbers::pi;
      Line(EllipsePoints(at, {radius, 0, 0}, {0, radius, 0}, from, to), frame);
    } else if (type == "ELLIPSE") {
      const XYZ major = values.Point(11);
      XYZ normal = values.Point(210, {0, 0, 1});
      static_cast<void>(normal.Normalize());
      const XYZ minor = normal.Cross(major) * values.Real(40, 1.0);
      Line(EllipsePoints(at, major, minor, values.Real(41), values.Real(42, 2 * std::numbers::pi)));
    } else if (type == "LWPOLYLINE") {
      Line(PolylinePoints(Vertices(values), (values.Integer(70, 0) & kClosed) != 0), frame);
    } else if (type == "SPLINE") {
      ShowSpline(values);
    } else if (type == "LEADER") {
      Line(Points(values, 10));
    } else if (type == "SOLID" || type == "TRACE") {
      Area({at, values.Point(11), values.Point(13, values.Point(12)), values.Point(12)}, frame);
    } else if (type == "3DFACE") {
      Line({at, values.Point(11), values.Point(12), values.Point(13, values.Point(12)), at});
    } else if (type == "POINT") {
      Line({at, at});
    } else if (type == "HATCH") {
      ShowHatch(values, frame);
    } else if (type == "TEXT" || (type == "ATTRIB" && (values.Integer(70, 0) & 1) == 0)) {
      ShowText(values, frame);
    } else if (type == "MTEXT") {
      ShowParagraph(values);
    }
  }

  static std::vector<Vertex> Vertices(const EntityValues& values) {
    std::vector<Vertex> vertices;
    for (const Group group : values.Groups()) {
      const double number = ParseReal(group.text).value_or(0.0);
      if (group.code == 10) vertices.push_back({{number, 0, 0}});
      if (vertices.empty()) continue;
      if (group.code == 20) vertices.back().point.y = number;
      if (group.code == 42) vertices.back().bulge = number;
    }
    return vertices;
  }

  static std::vector<XYZ> Points(const EntityValues& values, LONG code) {
    std::vector<XYZ> points;
    for (const Group group : values.Groups()) {
      const double number = ParseReal(group.text).value_or(0.0);
      if (group.code == code) points.push_back({number, 0, 0});
      if (!points.empty() && group.code == code + 10) points.back().y = number;
      if (!points.empty() && group.code == code + 20) points.back().z = number;
    }
    return points;
  }

  void ShowSpline(const EntityValues& values) {
    std::vector<double> knots;
    for (const Group group : values.Groups()) {
      if (group.code == 40) knots.push_back(ParseReal(group.text).value_or(0.0));
    }
    const std::vector<XYZ> controls = Points(values, 10);
    const auto degree = static_cast<std::size_t>(std::max(LONG{0}, values.Integer(71, 3)));
    Line(controls.empty() ? Points(values, 11) : SplinePoints(controls, knots, degree));
  }

  void ShowPolyline(IZDMObject& polyline, const EntityValues& values) {
    enum : LONG { k3D = 8, kMesh = 16, kFaces = 64, kControl = 16, kFace = 128 };
    const LONG flags = values.Integer(70, 0);
    std::vector<Vertex> vertices;
    std::vector<std::array<LONG, 4>> faces;
    auto* manager = ViewAs<IZDMObjMgr>(&polyline);
    for (LONGLONG pos = manager->GetValidHeadPosition(); pos != 0;) {
      IZDMObject* object = manager->GetValidNext(pos);
      const DrawingPart* part = PartOf(object);
      if (part == nullptr || part->Type() != "VERTEX") continue;
      const EntityValues vertex(*object);
      const LONG kind = vertex.Integer(70, 0);
      if ((flags & kFaces) != 0 && (kind & (kFace | 64)) == kFace) {
        faces.push_back(
            {vertex.Integer(71), vertex.Integer(72), vertex.Integer(73), vertex.Integer(74)});
      } else if ((kind & kControl) == 0) {
        vertices.push_back({vertex.Point(10), (flags & k3D) != 0 ? 0.0 : vertex.Real(42)});
      }
    }
    if ((flags & kFaces) != 0) return ShowFaces(vertices, faces);
    if ((flags & kMesh) != 0) return ShowMesh(vertices, values, flags);
    const GeMatrix frame =
        (flags & k3D) != 0 ? GeMatrix() : ExtrusionFrame(values.Point(210, {0, 0, 1}));
    Line(PolylinePoints(vertices, (flags & kClosed) != 0), frame);
  }

  /// Faces name their corners from 1; a negative one begins an edge that is not shown.
  void ShowFaces(const std::vector<Vertex>& vertices,
                 const std::vector<std::array<LONG, 4>>& faces) {
    for (const auto& face : faces) {
      std::vector<XYZ> points;
      for (const LONG corner : face) {
        const auto index = static_cast<std::size_t>(corner < 0 ? -LONGLONG{corner} : corner);
        if (index >= 1 && index <= vertices.size()) points.push_back(vertices[index - 1].point);
      }
      if (!points.empty()) points.push_back(points[0]);
      Line(std::move(points));
    }
  }

  void ShowMesh(const std::vector<Vertex>& vertices, const EntityValues& values, LONG flags) {
    constexpr LONG kClosedAcross = 32;
    const auto columns = static_cast<std::size_t>(std::max(LONG{0}, values.Integer(72)));
    if (columns == 0) return;
    const std::size_t rows = vertices.size() / columns;
    for (std::size_t row = 0; row < rows; ++row) {
      std::vector<XYZ> points;
      for (std::size_t column = 0; column < columns; ++column) {
        points.push_back(vertices[row * columns + column].point);
      }
      if ((flags & kClosedAcross) != 0) points.push_back(points[0]);
      Line(std::move(points));
    }
    for (std::size_t column = 0; column < columns && rows != 0; ++column) {
      std::vector<XYZ> points;
      for (std::size_t row = 0; row < rows; ++row) {
        points.push_back(vertices[row * columns + column].point);
      }
      if ((flags & kClosed) != 0) points.push_back(points[0]);
      Line(std::move(points));
    }
  }

  /// The outlines that are polylines, and the straight edges of others.
  void ShowHatch(const EntityValues& values, const GeMatrix& frame) {
    enum { kOutside, kPolyline, kEdges } state = kOutside;
    bool isLine = false;
    std::vector<XYZ> points;
    for (const Group group : values.Groups()) {
      const double number = ParseReal(group.text).value_or(0.0);
      if (group.code == 92) {
        Close(&points, frame);
        state = (static_cast<LONG>(number) & 2) != 0 ? kPolyline : kEdges;
        isLine = false;
      } else if (group.code == 75 || group.code == 97) {
        Close(&points, frame);
        state = kOutside;
      } else if (state == kEdges && group.code == 72) {
        isLine = number == 1.0;
      } else if (state == kPolyline || (state == kEdges && isLine)) {
        const bool isEnd = state == kEdges && (group.code == 11 || group.code == 21);
        const LONG code = isEnd ? group.code - 1 : group.code;
        if (code == 10) points.push_back({number, 0, 0});
        if (code == 20 && !points.empty()) points.back().y = number;
      }
    }
    Close(&points, frame);
  }

  void Close(std::vector<XYZ>* points, const GeMatrix& frame) {
    if (points->size() > 1) {
      points->push_back((*points)[0]);
      Line(*points, frame);
    }
    points->clear();
  }

  void ShowText(const EntityValues& values, const GeMatrix& frame) {
    const LONG across = values.Integer(72, 0);
    const bool isAligned = across != 0 || values.Integer(73, 0) != 0 || values.Integer(74, 0) != 0;
    const bool hasSecond = !values.Text(11).empty() && across != 3 && across != 5;
    const XYZ at = isAligned && hasSecond ? values.Point(11) : values.Point(10);
    const double height = values.Real(40, 1.0);
    const double lowered = across == 4 ? 0.5 : std::max(LONG{0}, values.Integer(73, 0) - 1) / 2.0;
    const GeMatrix placement =
        GeMatrix::MakeTranslation({0, -std::min(lowered, 1.0), 0}) *
        GeMatrix::MakeScale({}, XYZ{height * values.Real(41, 1.0), height, 1.0}) *
        GeMatrix::MakeRotation({}, {0, 0, 1}, Capped(values.Real(50)) * kDegree) *
        GeMatrix::MakeTranslation(at) * frame;
    const double anchor = across == 1 || across == 4 ? 0.5 : across == 2 ? 1.0 : 0.0;
    Text(ShownLine(codec_.Show(values.Text(1))), placement, anchor);
  }

  void ShowParagraph(const EntityValues& values) {
    constexpr double kLineHeight = 5.0 / 3.0;
    constexpr double kLetterWidth = 0.85;
    std::string written;
    for (const Group group : values.Groups()) {
      if (group.code == 3) written += group.text;
      if (group.code == 1) written += group.text;
    }
    const double height = values.Real(40, 1.0);
    const double width = height > 0.0 ? values.Real(41) / (height * kLetterWidth) : 0.0;
    const auto letters = static_cast<std::size_t>(std::clamp(width, 0.0, 1e6));
    const std::vector<WideString> lines = ShownParagraph(codec_.Show(written), letters);
    const LONG attached = std::clamp(values.Integer(71, 1), LONG{1}, LONG{9}) - 1;
    const double tall = 1.0 + kLineHeight * static_cast<double>(lines.size() - 1);
    const double raised = static_cast<double>(attached / 3) / 2.0 * tall;
    XYZ along = values.Point(11, {std::cos(Capped(values.Real(50)) * kDegree),
                                  std::sin(Capped(values.Real(50)) * kDegree), 0});
    if (!along.Normalize()) along = {1, 0, 0};
    const GeMatrix frame = GeMatrix::MakeFrame(values.Point(10), along * height,
                                               XYZ{-along.y, along.x, 0} * height, {0, 0, 1});
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const double drop = raised - 1.0 - kLineHeight * static_cast<double>(i);
      Text(lines[i], GeMatrix::MakeTranslation({0, drop, 0}) * frame, attached % 3 / 2.0);
    }
  }

  // Shapes.

  void Line(std::vector<XYZ> points, const GeMatrix& frame = {}) {
    Emit(Shape::Kind::kLine, points, frame);
  }
  void Area(std::vector<XYZ> points, const GeMatrix& frame) {
    Emit(Shape::Kind::kArea, points, frame);
  }

  void Emit(Shape::Kind kind, const std::vector<XYZ>& points, const GeMatrix& frame) {
    for (const GeMatrix& placement : scene_->placements) {
      if (left_ == 0 || points.empty()) return;
      --left_;
      const GeMatrix whole = frame * placement;
      Shape shape = {kind, color_, {}, {}, {}, 0.0};
      for (const XYZ& point : points) shape.points.push_back(whole.TransformPoint(point));
      if (std::ranges::all_of(shape.points, &XYZ::IsFinite)) show_(shape);
    }
  }

  void Text(const WideString& text, const GeMatrix& frame, double anchor) {
    for (const GeMatrix& placement : scene_->placements) {
      if (left_ == 0 || text.empty()) return;
      --left_;
      const Shape shape = {Shape::Kind::kText, color_, {}, text, frame * placement, anchor};
      bool isFinite = true;
      for (int row = 0; row < 4; ++row)
        isFinite = isFinite && shape.placement.GetRow(row).IsFinite();
      if (isFinite) show_(shape);
    }
  }

  TextCodec codec_;
  const std::function<void(const Shape&)>& show_;
  const Scene* scene_ = nullptr;
  ULONG color_ = kBlack;
  std::size_t left_ = kMostShapes;
};

/// The inserts of a path; empty for a path of anything else.
std::vector<IZDMObject*> InsertsOn(const PID& path) {
  std::vector<IZDMObject*> inserts;
  for (const OID* record : path.OIDs) {
    auto* insert = record != nullptr ? dynamic_cast<CZDMDrawingInsert*>(record->Object) : nullptr;
    if (insert == nullptr || !record->JudgeStatus(ZOS_VALID)) return {};
    inserts.push_back(insert);
  }
  return inserts;
}

}  // namespace

void ShowShapes(CZDMDrawing& drawing, CPIDManager& paths,
                const std::function<void(const Shape&)>& show) {
  IZDMObjMgr* entities = drawing.FindSection("ENTITIES");
  if (entities == nullptr) return;
  Painter painter(drawing, show);
  Scene model;
  model.placements.emplace_back();
  painter.ShowAll(*entities, model, true, 0);
  for (const PID* path : paths.GetPIDs()) {
    const std::vector<IZDMObject*> inserts = InsertsOn(*path);
    if (inserts.empty() || inserts[0]->GetOwner() != static_cast<IZDMObject*>(entities)) continue;
    CZDMDrawingBlock* block = BlockOf(*inserts.back());
    if (block == nullptr) continue;
    Scene scene = model;
    for (IZDMObject* insert : inserts) scene = painter.Inside(*insert, scene);
    painter.ShowAll(*block, scene, false, 0);
  }
}

}  // namespace zdm
