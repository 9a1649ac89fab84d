#include <velkapi/VelkApi.h>
#include <velkhost/OfflineHost.h>

#include <iostream>

int main() {
    velkhost::OfflineHost::instance().setStore(1, {{"4 1 1 1", "old"}});
    VelkApi::MillTurnVdm vdm(1);
    std::string header;
    if (!vdm.Create() || !vdm.SeekFromStart(0) || !vdm.SingleGet(header))
        return 1;
    std::cout << "read: " << header << "\n";
    vdm.LoadOperation(0);
    vdm.BeginSection(0);
    vdm.AddLine("hello");
    vdm.EndSection();
    vdm.Close();
    std::cout << "new line: " << velkhost::OfflineHost::instance().lines(1, 0)[1] << "\n";
    std::cout << "kind: "
              << VelkApi::millDrillOperationTypeToString(
                     VelkApi::StringToMillDrillOperationType("boring"))
              << "\n";
}
