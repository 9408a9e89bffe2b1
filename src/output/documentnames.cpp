// SPDX-License-Identifier: GPL-3.0-or-later
#include "output/documentnames.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"

DocumentNames::DocumentNames(const QString& group, Counter counter) : m_group(group), m_counter(counter)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, group);
    m_rules = readNamingRules(*settings);
}

QString DocumentNames::baseName(int index) const
{
    if (!m_rules.userDefined)
        return takeImageName(m_group, false);
    if (m_counter == Counter::Batches)
        return m_rules.prefix;
    NamingRules rules = m_rules;
    rules.stamp = false;
    rules.start = counterAfter(m_rules.start, index);
    return imageName(rules, {}, false);
}

QString DocumentNames::next(int index, const QString& folder, const QString& type)
{
    const QString wanted = safeBaseName(baseName(index));
    const auto pathOf = [&](const QString& name) {
        return folder + QLatin1Char('/') + name + QLatin1Char('.') + type;
    };
    const bool mayReplace = m_rules.cover && !m_used.contains(pathOf(wanted));
    QString name = freeBaseName(folder, wanted, type, mayReplace);
    // The document before may have failed, so that its name looks free.
    for (int n = 1; m_used.contains(pathOf(name)); ++n)
        name = freeBaseName(folder, wanted + QLatin1Char('-') + QString::number(n), type, false);
    m_used.insert(pathOf(name));
    return name;
}

void DocumentNames::advance(int documents) const
{
    if (documents == 0 || (!m_rules.userDefined && m_counter == Counter::Documents))
        return;
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, m_group);
    settings->setValue(keys::start, counterAfter(m_rules.start, documents));
    saveSettings(*settings);
}
