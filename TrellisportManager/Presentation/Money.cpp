#include "Presentation/Money.h"

namespace trellisport {

QString moneyText(double amount, int decimals)
{
    return QLatin1Char('$') + QString::asprintf("%.*f", decimals, amount);
}

} // namespace trellisport
