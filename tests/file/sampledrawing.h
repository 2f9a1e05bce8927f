#pragma once

#include "tests/file/filetest.h"

/// A drawing that holds every class and every kind of record: five entities in the model space, one
/// of them erased, one in paper space, two in a block of its own.
inline void fillSample(CVexDbDatabase& drawing)
{
    auto* layer = new CVexDbLayerTableRecord(&drawing);
    layer->setName(CString(L"Rohr\x00fc\x4e2d"));
    layer->setColorId(CVexDbObjectId(drawing.colors().getCurrentRecord()));
    layer->setLinetypeId(CVexDbObjectId(drawing.linetypes().getCurrentRecord()));
    layer->setIsLocked(true);
    drawing.layers().add(layer);
    auto* symbol = new CVexDbSymbolTableRecord(&drawing);
    symbol->setName(CString(L"*S0"));
    symbol->SetBase(1.0, 2.0, 3.0);
    symbol->AppendPoint(CVexDbSymPoint(CVexGePoint2d(4.0, 5.0), 6));
    drawing.symbols().add(symbol);
    drawing.projectInfos().setFirstText(L"Plant 4");
    drawing.projectInfos().setSecondText(L"Steam");

    auto* line = addTo(drawing, new CVexDbLine({10.0, 10.0}, {100.0, 50.0}));
    line->setLayer(layer->getName());
    line->setLineType(CString(L"Hidden"), true);
    line->setColor(2, true);
    giveXData(*line, L"weld 7", 2.5);
    addTo(drawing, new CVexDbBox({20.0, 20.0}, 30.0, 40.0, 0.5));
    addTo(drawing, new CVexDbRect(CVexGePoint2d(1.0, 2.0), CVexGePoint2d(300.0, 200.0)));
    addTo(drawing, new CVexDbPoint(CVexGePoint2d(70.0, 80.0)))->SetSize(2.0);
    addTo(drawing, new CVexDbLine({0.0, 0.0}, {1.0, 1.0}))->setErased();

    auto* block = new CVexDbBlockTableRecord(&drawing);
    block->setName(CString(L"Valve"));
    drawing.blocks().add(block);
    block->initDisplayRec();
    drawing.blocks().setCurrentRecord(block);
    addTo(drawing, new CVexDbLine({-5.0, 0.0}, {5.0, 0.0}));
    addTo(drawing, new CVexDbBox({-5.0, -5.0}, 10.0, 10.0, 0.0));
    drawing.blocks().SetCurentSpace(CVexDbBlockTable::kPaperSpace);
    addTo(drawing, new CVexDbRect(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(420.0, 297.0)));
    drawing.blocks().SetCurentSpace(CVexDbBlockTable::kModelSpace);
}
