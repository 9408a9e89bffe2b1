// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/namingfields.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/dialogparts.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QSpinBox>
#include <type_traits>

namespace {

template <typename Rules, typename Visit>
void forEachRule(Rules& rules, Visit visit)
{
    visit(rules.stamp, keys::dateAndtime);
    visit(rules.systemStamp, keys::system);
    visit(rules.order[0], keys::year);
    visit(rules.order[1], keys::month);
    visit(rules.order[2], keys::date);
    visit(rules.separator, keys::separator);
    visit(rules.hours24, keys::timeType);
    visit(rules.userDefined, keys::usrDefine);
    visit(rules.prefix, keys::name);
    visit(rules.start, keys::start);
    visit(rules.digits, keys::length);
    visit(rules.cover, keys::cover);
    visit(rules.askAfter, keys::showConfirmBox);
    visit(rules.askBefore, keys::messgBox);
    visit(rules.finishStartApp, keys::finishStarApp);
    visit(rules.appName, keys::appName);
}

// The factory values of those keys that `isWanted`.
template <typename Wanted>
void takeFactoryValues(NamingRules& rules, const QString& group, Wanted isWanted)
{
    const SettingTable& known = table(group);
    forEachRule(rules, [&](auto& value, const char* key) {
        const Setting* setting = known.find(key);
        if (setting && isWanted(key))
            value = setting->factory.value<std::decay_t<decltype(value)>>();
    });
}

} // namespace

NamingRules offeredNamingRules(const QString& group)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, group);
    NamingRules rules = readNamingRules(*settings);
    takeFactoryValues(rules, group,
                      [&settings](const char* key) { return !settings->contains(QLatin1String(key)); });
    return rules;
}

NamingRules factoryNamingRules(const QString& group)
{
    NamingRules rules;
    takeFactoryValues(rules, group, [](const char*) { return true; });
    return rules;
}

void storeNamingRules(QSettings& group, const NamingRules& rules)
{
    const auto put = [&group](const char* key, const QVariant& value) {
        group.setValue(QLatin1String(key), value);
    };
    forEachRule(rules, [&put](const auto& value, const char* key) { put(key, value); });
    put(keys::usr, !rules.systemStamp);
    for (const char* key : {keys::systemState, keys::usrState})
        put(key, rules.stamp);
    for (const char* key :
         {keys::yearState, keys::monthState, keys::dateState, keys::separatorState, keys::timeTypeState})
        put(key, rules.stamp && !rules.systemStamp);
    for (const char* key : {keys::nameState, keys::startState, keys::lengthState, keys::messgBoxState})
        put(key, rules.userDefined);
    put(keys::coverState, true);
    put(keys::finishStarAppNameState, rules.finishStartApp);
}

NamingFields::NamingFields(const Controls& controls, QObject* parent) : QObject(parent), m_controls(controls)
{
    const QRegularExpression number(QStringLiteral("[0-9]{0,18}"));
    m_controls.start->setValidator(new QRegularExpressionValidator(number, m_controls.start));
    m_controls.nextName->setTextFormat(Qt::PlainText);
    connect(m_controls.prefix, &QLineEdit::textChanged, this, &NamingFields::edited);
    connect(m_controls.start, &QLineEdit::textChanged, this, &NamingFields::edited);
    connect(m_controls.digits, QOverload<int>::of(&QSpinBox::valueChanged), this, &NamingFields::edited);
    connect(m_controls.cover, &QCheckBox::toggled, this, &NamingFields::edited);
}

void NamingFields::show(const NamingRules& rules)
{
    m_controls.prefix->setText(rules.prefix);
    m_controls.start->setText(rules.start);
    m_controls.digits->setValue(rules.digits);
    m_controls.cover->setChecked(rules.cover);
}

void NamingFields::take(NamingRules& rules) const
{
    rules.prefix = m_controls.prefix->text().trimmed();
    rules.start = m_controls.start->text();
    rules.digits = m_controls.digits->value();
    rules.cover = m_controls.cover->isChecked();
}

void NamingFields::setUsable(bool userDefined)
{
    m_controls.prefix->setEnabled(userDefined);
    m_controls.start->setEnabled(userDefined);
    m_controls.digits->setEnabled(userDefined);
}

QString NamingFields::nextName(const NamingRules& rules)
{
    return safeBaseName(imageName(rules, QDateTime::currentDateTime(), false));
}

void NamingFields::showNextName(const NamingRules& rules)
{
    m_controls.nextName->setText(nextName(rules));
}

bool NamingFields::check(bool userDefined, QLabel* message) const
{
    if (!userDefined)
        return true; // the fields cannot be used, their content has no effect
    const QString problem = dialogparts::prefixProblem(m_controls.prefix->text().trimmed());
    if (!problem.isEmpty()) {
        dialogparts::refuse(message, problem, m_controls.prefix);
        return false;
    }
    if (m_controls.start->text().isEmpty() || !m_controls.start->hasAcceptableInput()) {
        dialogparts::refuse(message, tr("起始编号必须是数字。"), m_controls.start);
        return false;
    }
    return true;
}
