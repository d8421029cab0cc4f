// The options page's group "Internetverbindung".
#include <string>

#include "base/numbers.h"
#include "core/log.h"
#include "core/settings.h"
#include "ui/options.h"

namespace bromvale {
namespace {

constexpr const char* kUsualPort = "80";

void enableProxyFields(OptionsPage& form, bool on) {
    form.txtProxyPort.setEnabled(on);
    form.lblProxyport.setEnabled(on);
    form.txtProxyAdresse.setEnabled(on);
    form.lblProxyAdresse.setEnabled(on);
}

}  // namespace

// Another number than 0 and 1 leaves both buttons as they are.
void loadProxyOptions(OptionsPage& form) {
    if (Proxy == 0) {
        form.rdoINet1.setValue(true);
        form.rdoINet2.setValue(false);
    } else if (Proxy == 1) {
        form.rdoINet1.setValue(false);
        form.rdoINet2.setValue(true);
    }
    form.txtProxyAdresse.setText(ProxyAdresse);
    form.txtProxyPort.setText(std::to_string(ProxyPort));
}

// Address and port stay stored, only greyed.
void OptionsPage::rdoINet1_Click() {
    storeOption("Proxy", "0");
    enableProxyFields(*this, false);
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::rdoINet2_Click() {
    storeOption("Proxy", "1");
    enableProxyFields(*this, true);
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::txtProxyAdresse_Change() {
    storeOption("ProxyAdresse", txtProxyAdresse.text());
    cmdÜbernehmen.setEnabled(true);
}

// The box never stays empty: what is erased is "80" at once. That assignment runs this handler again, which
// then stores it.
void OptionsPage::txtProxyPort_Change() {
    if (!txtProxyPort.text().empty() && !isNumeric(txtProxyPort.text())) {
        MsgBox("Der Proxyport besteht nur aus einer Zahl. z.B. 80", kStyleInformation);
        txtProxyPort.setText(kUsualPort);
        txtProxyPort.setFocus();
        return;
    }
    if (txtProxyPort.text().empty() || txtProxyPort.text() == "0") txtProxyPort.setText(kUsualPort);
    storeOption("ProxyPort", txtProxyPort.text());
    cmdÜbernehmen.setEnabled(true);
}

}  // namespace bromvale
