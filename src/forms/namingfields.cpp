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

NamingRules offeredNamingRules(const QString& group)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, group);
    NamingRules rules = readNamingRules(*settings);
    const SettingTable& known = table(group);
    const auto fill = [&](auto& value, const char* key) {
        const Setting* setting = known.find(key);
        if (setting && !settings->contains(QLatin1String(key)))
            value = setting->factory.value<std::decay_t<decltype(value)>>();
    };
    fill(rules.systemStamp, keys::system);
    fill(rules.order[0], keys::year);
    fill(rules.order[1], keys::month);
    fill(rules.order[2], keys::date);
    fill(rules.prefix, keys::name);
    fill(rules.start, keys::start);
    fill(rules.digits, keys::length);
    return rules;
}

void storeNamingRules(QSettings& group, const NamingRules& rules)
{
    const auto put = [&group](const char* key, const QVariant& value) {
        group.setValue(QLatin1String(key), value);
    };
    put(keys::dateAndtime, rules.stamp);
    put(keys::system, rules.systemStamp);
    put(keys::usr, !rules.systemStamp);
    put(keys::year, rules.order[0]);
    put(keys::month, rules.order[1]);
    put(keys::date, rules.order[2]);
    put(keys::separator, rules.separator);
    put(keys::timeType, rules.hours24);
    put(keys::usrDefine, rules.userDefined);
    put(keys::name, rules.prefix);
    put(keys::start, rules.start);
    put(keys::length, rules.digits);
    put(keys::cover, rules.cover);
    put(keys::showConfirmBox, rules.askAfter);
    put(keys::messgBox, rules.askBefore);
    put(keys::finishStarApp, rules.finishStartApp);
    put(keys::appName, rules.appName);

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
