#include "setup/pin_store.h"

#include "identity/stored_pin.h"
#include "items/text_rules.h"

namespace setup {
namespace {

bool HasRow(store::Connection& main, const QString& sql) {
    store::Fault fault;
    const auto rows = main.Query(sql, fault);
    return rows && !rows->Eof();
}

QString Update(store::Connection& main, const QString& sql) {
    store::Fault fault;
    return main.Execute(sql, fault) ? QString() : "The PIN can't be stored: " + fault.description;
}

QString StoreStaffPin(store::Connection& main, const QString& code, const QString& stored) {
    const QString where = " WHERE コード = '" + items::EscapeSqlText(code) + "'";
    if (!HasRow(main, "SELECT コード FROM M担当者" + where)) return "There is no staff member " + code + ".";
    return Update(main, "UPDATE M担当者 SET 暗証番号 = '" + stored + "'" + where);
}

QString StorePrivilegePin(store::Connection& main, const std::optional<QString>& site, const QString& stored) {
    const QString set = " SET 特権暗証番号 = '" + stored + "'";
    if (site) {
        const QString where = " WHERE コード = '" + items::EscapeSqlText(*site) + "'";
        if (!HasRow(main, "SELECT コード FROM M事業所" + where)) return "There is no site " + *site + ".";
        return Update(main, "UPDATE M事業所" + set + where);
    }
    if (!HasRow(main, "SELECT ID FROM Mユーザ WHERE ID = '0001'")) return "There is no company row Mユーザ '0001'.";
    const QString problem = Update(main, "UPDATE Mユーザ" + set + " WHERE ID = '0001'");
    return problem.isEmpty() ? Update(main, "UPDATE M事業所" + set) : problem;
}

}  // namespace

QString StorePin(const Tree& tree, const PinOrder& order) {
    const OpenTree open = OpenStores(tree, order.admin);
    if (!open.main) return open.problem;
    const auto stored = identity::EncodePin(order.pin, tree.PinKey());
    if (!stored) return "The PIN key " + tree.PinKey() + " can't be read.";
    return order.staff ? StoreStaffPin(*open.main, *order.staff, *stored)
                       : StorePrivilegePin(*open.main, order.site, *stored);
}

QString PinWarning(const QString& pin) {
    // What is typed into the dialog is made upper-case and has to be longer than three characters.
    if (pin.size() <= 3) return "A PIN of three characters or fewer is never accepted.";
    if (pin != pin.toUpper()) return "A PIN with lower-case letters is never accepted.";
    return {};
}

}  // namespace setup
