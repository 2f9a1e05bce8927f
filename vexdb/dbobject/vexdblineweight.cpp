#include "vexdb/dbobject/vexdblineweight.h"

#include "platform/base/vextext.h"

namespace {

constexpr std::array<VexDb::LineWeight, 26> listOf(const std::array<int, 26>& numbers)
{
    std::array<VexDb::LineWeight, 26> weights = {};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        weights[i] = static_cast<VexDb::LineWeight>(numbers[i]);
    }
    return weights;
}

} // namespace

constinit const std::array<VexDb::LineWeight, 26> kLineWeights =
    listOf({-1, -2, -3, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35,
            40, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211});

CString _getStrWeight(CString weight)
{
    switch (const int number = toInteger(weight.str()); number) {
    case VexDb::kLineWeightDefault: return L"Default";
    case VexDb::kLineWeightByBlock: return L"ByBlock";
    case VexDb::kLineWeightByLayer: return L"ByLayer";
    default: {
        CString text;
        text.Format(L"%.2f mm", number / 100.0);
        return text;
    }
    }
}
