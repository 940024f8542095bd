#include "engine/formula/Function.h"

#include <QHash>

namespace lumivane::engine {

const Function* findFunction(const QString& name)
{
    static const QHash<QString, const Function*> byName = [] {
        QHash<QString, const Function*> all;
        for (const auto& functions : {logicFunctions(), mathFunctions(), statisticFunctions(), conditionalFunctions(),
                                      textFunctions(), dateFunctions(), lookupFunctions(), informationFunctions()}) {
            for (const Function& function : functions)
                all.insert(QString::fromUtf8(function.name), &function);
        }
        return all;
    }();
    return byName.value(name, nullptr);
}

} // namespace lumivane::engine
