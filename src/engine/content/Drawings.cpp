#include "engine/content/Drawings.h"

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

qint64 shapeBytes(const ShapeContent& shape)
{
    qint64 sum = qint64(sizeof(shape) + (shape.geometry.guides.size() + shape.geometry.adjusts.size()) * sizeof(Guide));
    for (const ShapePath& path : shape.geometry.paths) {
        for (const PathStep& step : path.steps)
            sum += qint64(sizeof(step) + step.arguments.size() * sizeof(std::string));
    }
    for (const ShapeParagraph& paragraph : shape.text.paragraphs) {
        sum += qint64(sizeof(paragraph));
        for (const ShapeTextRun& run : paragraph.runs)
            sum += qint64(sizeof(run)) + run.text.size() * qint64(sizeof(QChar));
    }
    for (const ShapeContent& child : shape.children)
        sum += shapeBytes(child);
    return sum;
}

} // namespace

QString kindWord(DrawingKind kind)
{
    switch (kind) {
    case DrawingKind::Chart:
        return u"chart"_s;
    case DrawingKind::Picture:
        return u"picture"_s;
    case DrawingKind::Group:
        return u"group"_s;
    case DrawingKind::Diagram:
        return u"diagram"_s;
    case DrawingKind::Control:
        return u"control"_s;
    case DrawingKind::Object:
        return u"object"_s;
    case DrawingKind::Shape:
        break;
    }
    return u"shape"_s;
}

qint64 drawingBytes(const DrawingContent& drawing)
{
    return qint64(sizeof(drawing) - sizeof(drawing.shape)) + shapeBytes(drawing.shape);
}

} // namespace lumivane::engine
