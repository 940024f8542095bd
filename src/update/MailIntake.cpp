#include "update/MailIntake.h"

namespace lumivane {

static MailIntake& theMailIntake()
{
    static MailIntake intake;
    return intake;
}

void setMailIntake(MailIntake intake)
{
    theMailIntake() = std::move(intake);
}

const MailIntake& mailIntake()
{
    return theMailIntake();
}

} // namespace lumivane
