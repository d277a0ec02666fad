// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickTable.h"
#include "TestSupport.h"
#include "VireoExtOutParam.h"
#include "VireoExtPropertyParam.h"
#include "VireoTextureBrick.h"
#include "dzboolproperty.h"
#include "dzbrickuserfile.h"
#include "dzclassfactory.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzoutparam.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"
#include "dzvec3param.h"

#include <QDir>
#include <QRegularExpression>
#include <algorithm>

namespace {

/// One property or input as the table describes it.
struct Row {
    QString name;
    QString label;
    QString kind;
    QString value;
    QString defaultValue;
    QString min;
    QString max;
    QString clamped;
    QString mappable;
    QString items;
    QString link;
    bool isPair;

    bool isPlain() const { return link == QLatin1String("plain"); }
    bool isLinkable() const { return link.toInt() != 0; }

    /// The row with the number of its pair in the place of the marker.
    Row numbered(int number) const
    {
        Row row = *this;
        row.name.replace(QLatin1String("%1"), QString::number(number));
        row.label.replace(QLatin1String("%1"), QString::number(number));
        return row;
    }
};

struct ClassRow : BrickRow {
    explicit ClassRow(const BrickRow& brick)
        : BrickRow(brick)
    {
    }

    QVector<Row> rows;

    bool isRoot() const { return kind == QLatin1String("root"); }
    bool isTexture() const
    {
        return kind == QLatin1String("float") || kind == QLatin1String("color")
            || kind == QLatin1String("fresnel");
    }
    bool hasPairs() const
    {
        return std::any_of(rows.begin(), rows.end(), [](const Row& row) { return row.isPair; });
    }
    /// The rows of a brick with that many pairs, in order of creation.
    QVector<Row> rowsWithPairs(int pairs) const
    {
        QVector<Row> all;
        for (const Row& row : rows)
            if (!row.isPair)
                all.append(row);
        for (int number = 1; number <= pairs; ++number)
            for (const Row& row : rows)
                if (row.isPair)
                    all.append(row.numbered(number));
        return all;
    }
};

void readRows(const QString& record, bool isPair, QVector<ClassRow>* classes)
{
    for (QStringList cells : catalogueLines(record)) {
        while (cells.size() < 12)
            cells.append(QString());
        for (ClassRow& owner : *classes)
            if (owner.name == cells[0])
                owner.rows.append({ cells[1], cells[2], cells[3], cells[4], cells[5], cells[6],
                    cells[7], cells[8], cells[9], cells[10], cells[11], isPair });
    }
}

/// Read before main(): without the host and without expectations.
QVector<ClassRow> readCatalogue()
{
    QVector<ClassRow> classes;
    for (const BrickRow& brick : brickTable())
        classes.append(ClassRow(brick));
    readRows(QStringLiteral("P"), false, &classes);
    readRows(QStringLiteral("D"), true, &classes);
    return classes;
}

const QVector<ClassRow>& catalogue()
{
    static const QVector<ClassRow> classes = readCatalogue();
    return classes;
}

std::vector<std::string> classNames()
{
    std::vector<std::string> names;
    for (const ClassRow& brickClass : catalogue())
        names.push_back(brickClass.name.toStdString());
    return names;
}

std::string nameSuffix(const testing::TestParamInfo<std::string>& name)
{
    return name.param;
}

const ClassRow& classRow(const std::string& name)
{
    const QString wanted = QString::fromStdString(name);
    return *std::find_if(catalogue().begin(), catalogue().end(),
        [&wanted](const ClassRow& row) { return row.name == wanted; });
}

QStringList registeredBricks()
{
    QStringList names;
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
        if (factory->getMetaObject().inherits(&DzShaderBrick::staticMetaObject))
            names.append(factory->className());
    return names;
}

void setCount(DzShaderBrick* brick, int count)
{
    auto* property = qobject_cast<DzIntProperty*>(brick->findProperty(QStringLiteral("count")));
    ASSERT_NE(property, nullptr);
    property->setValue(count);
}

QVector<int> numbers(const QString& cell)
{
    QVector<int> parts;
    for (const QString& part : cell.split(QLatin1Char(' ')))
        parts.append(part.toInt());
    return parts;
}

QColor colorOf(const QString& cell)
{
    const QVector<int> parts = numbers(cell);
    return parts.size() == 3 ? QColor(parts[0], parts[1], parts[2], 255) : QColor();
}

// Values of one property -------------------------------------------------------------------------

void expectFloat(const DzProperty* property, const Row& row)
{
    auto* number = qobject_cast<const DzFloatProperty*>(property);
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->getValue(), row.value.toFloat());
    EXPECT_EQ(number->getDefaultValue(), row.defaultValue.toFloat());
    EXPECT_EQ(number->getMin(), row.min.toFloat());
    EXPECT_EQ(number->getMax(), row.max.toFloat());
}

void expectInt(const DzProperty* property, const Row& row)
{
    auto* number = qobject_cast<const DzIntProperty*>(property);
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->getValue(), row.value.toInt());
    EXPECT_EQ(number->getDefaultValue(), row.defaultValue.toInt());
    EXPECT_EQ(number->getMin(), row.min.toInt());
    EXPECT_EQ(number->getMax(), row.max.toInt());
}

void expectEnum(const DzProperty* property, const Row& row)
{
    auto* choice = qobject_cast<const DzEnumProperty*>(property);
    ASSERT_NE(choice, nullptr);
    QStringList items;
    for (int i = 0; i < choice->getNumItems(); ++i)
        items.append(choice->getItem(i));
    EXPECT_EQ(items.join(QLatin1Char('|')), row.items);
    EXPECT_EQ(choice->getValue(), row.value.toInt());
    EXPECT_EQ(choice->getDefaultValue(), row.defaultValue.toInt());
}

void expectColor(const DzProperty* property, const Row& row)
{
    auto* color = qobject_cast<const DzColorProperty*>(property);
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->getColorValue(), colorOf(row.value));
    EXPECT_EQ(color->getDefaultColorValue(), colorOf(row.defaultValue));
}

void expectBool(const DzProperty* property, const Row& row)
{
    auto* onOff = qobject_cast<const DzBoolProperty*>(property);
    ASSERT_NE(onOff, nullptr);
    EXPECT_EQ(onOff->getBoolValue(), row.value == QLatin1String("true"));
    EXPECT_EQ(onOff->getDefaultBoolValue(), row.defaultValue == QLatin1String("true"));
}

void expectProperty(const DzProperty* property, const Row& row)
{
    ASSERT_NE(property, nullptr);
    static const QHash<QString, QString> classes = {
        { QStringLiteral("float"), QStringLiteral("DzFloatProperty") },
        { QStringLiteral("color"), QStringLiteral("DzColorProperty") },
        { QStringLiteral("bool"), QStringLiteral("DzBoolProperty") },
        { QStringLiteral("int"), QStringLiteral("DzIntProperty") },
        { QStringLiteral("enum"), QStringLiteral("DzEnumProperty") },
        { QStringLiteral("image"), QStringLiteral("DzImageProperty") },
    };
    EXPECT_EQ(property->className(), classes.value(row.kind));
    EXPECT_EQ(property->getName(), row.name);
    EXPECT_EQ(property->getLabel(), row.label);
    EXPECT_EQ(property->getPath(), QStringLiteral("/General"));
    EXPECT_FALSE(property->isHidden());
    EXPECT_EQ(property->isLocked(), row.name == QLatin1String("displacementmap"));
    if (auto* numeric = qobject_cast<const DzNumericProperty*>(property)) {
        EXPECT_TRUE(property->canAnimate());
        EXPECT_FALSE(property->isUserProperty());
        EXPECT_EQ(numeric->isMappable(), row.mappable == QLatin1String("1"));
        EXPECT_FALSE(numeric->isMapped());
        EXPECT_EQ(numeric->isClamped(), row.clamped == QLatin1String("1"));
    }
    if (row.kind == QLatin1String("float"))
        expectFloat(property, row);
    else if (row.kind == QLatin1String("int"))
        expectInt(property, row);
    else if (row.kind == QLatin1String("enum"))
        expectEnum(property, row);
    else if (row.kind == QLatin1String("color"))
        expectColor(property, row);
    else if (row.kind == QLatin1String("bool"))
        expectBool(property, row);
    else
        EXPECT_TRUE(property->getValueText().isEmpty());
}

// One parameter ----------------------------------------------------------------------------------

/// The type of a settings row, where the table has no link type.
int settingsType(const QString& kind)
{
    if (kind == QLatin1String("bool"))
        return 8;
    if (kind == QLatin1String("int") || kind == QLatin1String("enum"))
        return 9;
    return kind == QLatin1String("float") ? 1009 : 1015;
}

QString linkText(const Row& row)
{
    // The displacement is linked like the others, but takes no image.
    if (!row.isLinkable() || row.mappable != QLatin1String("1"))
        return QString();
    switch (row.link.toInt()) {
    case 1009:
        return QStringLiteral("LFloat");
    case 1010:
        return QStringLiteral("LColor");
    default:
        return QStringLiteral("LuxFresnel");
    }
}

void expectPropertyParam(const DzBrickParam* param, const Row& row)
{
    auto* carrier = qobject_cast<const VireoExtPropertyParam*>(param);
    ASSERT_NE(carrier, nullptr);
    ASSERT_EQ(carrier->getNumProperties(), 1);
    EXPECT_EQ(carrier->getMapArg(), linkText(row));
    EXPECT_EQ(carrier->isFresnel(), row.link == QLatin1String("1016"));
    EXPECT_EQ(carrier->isConnectedOnly(), row.name == QLatin1String("displacementmap"));
    EXPECT_FALSE(carrier->shouldWriteTokenInShader());
    expectProperty(carrier->getProperty(0), row);
}

void expectVector(const DzBrickParam* param, const Row& row)
{
    auto* vector = qobject_cast<const DzVec3Param*>(param);
    ASSERT_NE(vector, nullptr);
    EXPECT_EQ(vector->className(), QStringLiteral("VireoExtVec3Param"));
    const QVector<int> parts = numbers(row.value);
    EXPECT_EQ(vector->getValue(), DzVec3(parts[0], parts[1], parts[2]));
    EXPECT_EQ(vector->getDefaultValue(), DzVec3(parts[0], parts[1], parts[2]));
    EXPECT_EQ(row.value, row.defaultValue);
}

void expectParam(const DzBrickParam* param, const Row& row)
{
    SCOPED_TRACE(row.name.toStdString());
    EXPECT_EQ(param->getName(), row.name);
    EXPECT_EQ(param->getLabel(), row.label);
    EXPECT_EQ(param->getArg(0), row.name);
    EXPECT_EQ(param->getDirection(), row.isLinkable() ? 0 : 1);
    EXPECT_EQ(param->getType(), row.isLinkable() ? row.link.toInt() : settingsType(row.kind));
    EXPECT_EQ(param->getNumConnections(), 0);
    if (row.kind.endsWith(QLatin1String("-input"))) {
        EXPECT_EQ(param->className(), QStringLiteral("VireoExtComplexIn"));
        EXPECT_EQ(param->getNumProperties(), 0);
    } else if (row.kind == QLatin1String("vector")) {
        expectVector(param, row);
    } else {
        expectPropertyParam(param, row);
    }
}

void expectRows(DzShaderBrick* brick, const ClassRow& expected, int pairs)
{
    int param = expected.isRoot() ? 0 : 1; // after the output
    int plain = 0;
    for (const Row& row : expected.rowsWithPairs(pairs)) {
        if (row.isPlain()) {
            ASSERT_LT(plain, brick->getNumProperties()) << row.name.toStdString();
            expectProperty(brick->getProperty(plain++), row);
        } else {
            ASSERT_LT(param, brick->getNumParameters()) << row.name.toStdString();
            expectParam(brick->getParameter(param++), row);
        }
    }
    EXPECT_EQ(plain, brick->getNumProperties());
    EXPECT_EQ(param, brick->getNumParameters());
}

// Golden text ------------------------------------------------------------------------------------

struct Section {
    QString title;
    QString text;
};

QVector<Section> sectionsOf(const QByteArray& file)
{
    QVector<Section> sections;
    QStringList lines = QString::fromUtf8(file).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1String("== ")) && line.endsWith(QLatin1String(" ==")))
            sections.append({ line.mid(3, line.size() - 6), QString() });
        else if (!sections.isEmpty())
            sections.last().text += line + QLatin1Char('\n');
    }
    return sections;
}

/// Feeds every input but the vectors with a fresh brick of its kind.
void linkEveryInput(VireoBrickUser& user, DzShaderBrick* brick)
{
    static const QHash<int, const char*> feeders = {
        { 1007, "VireoMatMatteBrick" },
        { 1008, "VireoVolClearBrick" },
        { 1009, "VireoTexFltConstantBrick" },
        { 1010, "VireoTexClrConstantBrick" },
        { 1016, "VireoTexFnlCauchyBrick" },
    };
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* input = brick->getParameter(i);
        if (!input->isInput() || !feeders.contains(input->getType()))
            continue;
        DzShaderBrick* feeder = addBrick(user, feeders.value(input->getType()));
        EXPECT_TRUE(input->addConnection(param(feeder, "result")))
            << input->getName().toStdString();
    }
}

QString textFor(const ClassRow& row, const QString& title)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, row.name.toLatin1().constData());
    QString what = title;
    if (what.startsWith(QLatin1String("count 3, "))) {
        setCount(brick, 3);
        what = what.mid(9);
    }
    if (what == QLatin1String("fresh placeholders"))
        return placeholderText(brick);
    if (what == QLatin1String("all locked")) {
        lockAll(brick);
        return placeholderText(brick);
    }
    if (what == QLatin1String("every input linked"))
        linkEveryInput(user, brick);
    return literalText(brick);
}

// Audits -----------------------------------------------------------------------------------------

/// Everything that a brick shows of itself, line by line.
QStringList description(DzShaderBrick* brick)
{
    QStringList lines;
    const auto describe = [&lines](const DzProperty* property) {
        DzPropertySettings settings;
        property->getAttributes(&settings);
        lines.append(property->className());
        for (int i = 0; i < settings.getNumValues(); ++i)
            lines.append(settings.getKey(i) + QLatin1Char('=') + settings.getValue(i));
        if (auto* choice = qobject_cast<const DzEnumProperty*>(property))
            for (int i = 0; i < choice->getNumItems(); ++i)
                lines.append(choice->getItem(i));
    };
    lines << brick->className() << brick->getPreferredName() << brick->getDefaultCategory()
          << brick->getBrickActionList();
    for (const DzProperty* property : brick->getPropertyList())
        describe(property);
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        const DzBrickParam* param = brick->getParameter(i);
        lines << param->className() << param->getName() << param->getLabel() << param->getArg(0)
              << param->getTypeString() << QString::number(param->getType())
              << QString::number(param->getDirection());
        for (int k = 0; k < param->getNumProperties(); ++k)
            describe(param->getProperty(k));
    }
    return lines;
}

void changeValue(DzProperty* property)
{
    if (auto* number = qobject_cast<DzFloatProperty*>(property))
        number->setValue(number->getValue() + 0.625f);
    else if (auto* color = qobject_cast<DzColorProperty*>(property))
        color->setColorValue(QColor(10, 20, 30, 40));
    else if (auto* choice = qobject_cast<DzEnumProperty*>(property))
        choice->setValue(choice->getNumItems() - 1);
    else if (auto* onOff = qobject_cast<DzBoolProperty*>(property))
        onOff->setBoolValue(!onOff->getBoolValue());
    else if (auto* whole = qobject_cast<DzIntProperty*>(property))
        whole->setValue(whole->getValue() + 3);
    else if (auto* image = qobject_cast<DzImageProperty*>(property))
        image->setValue(QStringLiteral("maps/käse \"1\".png"));
}

/// Changes every value, then locks every third property and maps every fourth that takes a map.
void changeEverything(DzShaderBrick* brick)
{
    int number = 0;
    const auto change = [&number](DzProperty* property) {
        changeValue(property);
        auto* numeric = qobject_cast<DzNumericProperty*>(property);
        if (numeric && numeric->isMappable() && number % 4 == 0)
            numeric->setMap(QStringLiteral("maps/m%1.png").arg(number));
        if (++number % 3 == 0)
            property->lock(true);
    };
    const QVector<DzProperty*> plain = brick->getPropertyList();
    for (DzProperty* property : plain)
        change(property);
    for (int i = 0; i < brick->getNumParameters(); ++i)
        for (int k = 0; k < brick->getParameter(i)->getNumProperties(); ++k)
            change(brick->getParameter(i)->getProperty(k));
}

class CatalogueTest : public testing::TestWithParam<std::string>
{
protected:
    const ClassRow& row() const { return classRow(GetParam()); }
    BrickPtr fresh() const { return makeBrick(GetParam().c_str()); }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(EveryClass, CatalogueTest, testing::ValuesIn(classNames()), nameSuffix);

TEST(Catalogue, theTableNamesExactlyTheRegisteredBrickClasses)
{
    const QStringList registered = registeredBricks();
    const QStringList named = brickClassNames();
    EXPECT_FALSE(named.isEmpty());
    for (const QString& name : registered)
        EXPECT_TRUE(named.contains(name))
            << name.toStdString() << " has no row in tests/data/catalogue.tsv";
    for (const QString& name : named) {
        EXPECT_TRUE(registered.contains(name))
            << name.toStdString() << " has no row in plugin/entry/ClassRegistration.cpp";
        EXPECT_EQ(named.count(name), 1) << name.toStdString();
        EXPECT_LE(registered.count(name), 1) << name.toStdString();
    }
    for (const BrickRow& brick : brickTable())
        EXPECT_EQ(brick.identifier.size(), 4) << brick.name.toStdString();
}

TEST(Catalogue, everyClassOfTheHeadersHasARowInTheTable)
{
    const QDir folder(projectPath(QStringLiteral("plugin/bricks/catalogue")));
    const QRegularExpression row(QStringLiteral("\\n *VIREO_(TEXTURE_)?BRICK\\(\\s*(\\w+),"));
    int found = 0;
    for (const QString& header : folder.entryList({ QStringLiteral("*Bricks.h") }, QDir::Files)) {
        const QString text
            = QString::fromUtf8(projectFile(QStringLiteral("plugin/bricks/catalogue/") + header));
        for (auto match = row.globalMatch(text); match.hasNext(); ++found) {
            const QString name = match.next().captured(2);
            EXPECT_TRUE(brickClassNames().contains(name))
                << name.toStdString() << " of " << header.toStdString()
                << " has no row in tests/data/catalogue.tsv";
        }
    }
    // All but the root, which is of no family.
    EXPECT_EQ(found, brickTable().size() - 1);
}

TEST(Catalogue, everyClassHasAGoldenFileAndEveryGoldenFileAClass)
{
    const QDir folder(projectPath(QStringLiteral("tests/golden/classes")));
    QStringList expected;
    for (const QString& name : brickClassNames())
        expected.append(name + QStringLiteral(".txt"));
    const QStringList files = folder.entryList(QDir::Files);
    for (const QString& name : expected)
        EXPECT_TRUE(files.contains(name))
            << "tests/golden/classes/" << name.toStdString() << " is missing: make golden";
    for (const QString& name : files)
        EXPECT_TRUE(expected.contains(name)) << name.toStdString() << " is of no class";
}

TEST_P(CatalogueTest, identityIsThatOfTheTable)
{
    const BrickPtr brick = fresh();
    ASSERT_NE(brick, nullptr);
    EXPECT_EQ(brick->className(), row().name);
    EXPECT_EQ(QString::fromLatin1(brick->metaObject()->superClass()->className()), row().base);
    EXPECT_EQ(brick->getLuxType(), row().type);
    EXPECT_EQ(brick->getPreferredName(), row().label);
    EXPECT_EQ(brick->getBrickTitle(), row().label);
    EXPECT_EQ(brick->getDefaultCategory(), row().category);
    EXPECT_EQ(brick->type(), row().isRoot() ? DzBrickSet::Surface : DzBrickSet::None);
    EXPECT_EQ(brick->shouldSeperateLocalProperties(), row().isRoot());
    auto* texture = qobject_cast<VireoTextureBrick*>(brick);
    ASSERT_EQ(texture != nullptr, row().isTexture());
    if (texture) {
        EXPECT_EQ(texture->getLuxTextureKind(), row().kind);
    }
}

TEST_P(CatalogueTest, oneOutputNamedResultCarriesTheClassesType)
{
    const BrickPtr brick = fresh();
    QVector<DzBrickParam*> outputs;
    for (int i = 0; i < brick->getNumParameters(); ++i)
        if (brick->getParameter(i)->isOutput())
            outputs.append(brick->getParameter(i));
    if (row().isRoot()) {
        EXPECT_TRUE(outputs.isEmpty());
        return;
    }
    ASSERT_EQ(outputs.size(), 1);
    EXPECT_EQ(brick->getParameter(0), outputs.first());
    EXPECT_EQ(outputs.first()->className(), QStringLiteral("VireoExtOutParam"));
    EXPECT_EQ(outputs.first()->getName(), QStringLiteral("result"));
    EXPECT_EQ(outputs.first()->getArg(0), QStringLiteral("result"));
    EXPECT_EQ(outputs.first()->getLabel(), QStringLiteral("Result"));
    EXPECT_EQ(outputs.first()->getDirection(), 2);
    EXPECT_EQ(outputs.first()->getType(), row().output.toInt());
}

TEST_P(CatalogueTest, propertiesAreThoseOfTheTableInOrder)
{
    const BrickPtr brick = fresh();
    expectRows(brick, row(), 0);
}

TEST_P(CatalogueTest, aCountOfTwoAddsThePairsOfTheTable)
{
    const BrickPtr brick = fresh();
    if (!row().hasPairs()) {
        EXPECT_EQ(brick->findProperty(QStringLiteral("count")), nullptr);
        return;
    }
    setCount(brick, 2);
    // The count itself is no longer as the table has it.
    auto* count = qobject_cast<DzIntProperty*>(brick->findProperty(QStringLiteral("count")));
    EXPECT_EQ(count->getValue(), 2);
    int place = 1;
    for (const Row& expected : row().rowsWithPairs(2)) {
        if (expected.isPlain())
            continue;
        ASSERT_LT(place, brick->getNumParameters());
        expectParam(brick->getParameter(place++), expected);
    }
    EXPECT_EQ(place, brick->getNumParameters());
}

TEST_P(CatalogueTest, textIsThatOfTheGoldenFile)
{
    QStringList titles = { QStringLiteral("fresh literal"), QStringLiteral("fresh placeholders"),
        QStringLiteral("all locked"), QStringLiteral("every input linked") };
    if (row().hasPairs())
        for (int i = 0; i < 4; ++i)
            titles.append(QStringLiteral("count 3, ") + titles.at(i));
    const QVector<Section> sections
        = sectionsOf(testFile(QStringLiteral("golden/classes/%1.txt").arg(row().name)));
    QStringList found;
    for (const Section& section : sections) {
        SCOPED_TRACE(section.title.toStdString());
        found.append(section.title);
        EXPECT_TEXT(section.text, textFor(row(), section.title));
    }
    EXPECT_EQ(found, titles);
}

TEST_P(CatalogueTest, theClassNameBearsThePrefix)
{
    EXPECT_TRUE(row().name.startsWith(QLatin1String("Vireo")));
    EXPECT_TRUE(row().name.endsWith(QLatin1String("Brick")));
}

TEST_P(CatalogueTest, twoBricksOfAClassAreAlike)
{
    const BrickPtr first = fresh();
    const BrickPtr second = fresh();
    EXPECT_NE(static_cast<VireoBrickBase*>(first), static_cast<VireoBrickBase*>(second));
    EXPECT_EQ(description(first), description(second));
}

TEST_P(CatalogueTest, makingABrickLeavesNothingToUndo)
{
    ASSERT_FALSE(dzUndoStack->hasItems());
    const BrickPtr brick = fresh();
    if (row().hasPairs())
        setCount(brick, 0);
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_FALSE(dzUndoStack->isLocked());
    EXPECT_EQ(brick->getNumCustomParams(), 0);
}

TEST_P(CatalogueTest, theLockParameterIsScopedAndRequiredAndNoInput)
{
    const BrickPtr brick = fresh();
    const QString lock = QStringLiteral("VireoBrickBaseLockParam");
    ASSERT_EQ(brick->getNumScopedParams(), 1);
    EXPECT_EQ(brick->getScopedParamName(0), lock);
    EXPECT_EQ(brick->getScopedParamType(0), 7);
    ASSERT_EQ(brick->getNumRequiredScopedParams(), 1);
    EXPECT_EQ(brick->getRequiredScopedParam(0), lock);
    EXPECT_EQ(brick->getRequiredScopedParamType(0), 7);
    EXPECT_EQ(brick->findParameterByName(lock), nullptr);
    EXPECT_EQ(brick->findProperty(lock), nullptr);
}

TEST_P(CatalogueTest, theActionListBeginsWithTheCustomInputActions)
{
    const QStringList actions = fresh()->getBrickActionList();
    if (row().isRoot()) {
        EXPECT_EQ(actions, QStringList({ QStringLiteral("VireoExportCodeAction"), QString() }));
        return;
    }
    ASSERT_GE(actions.size(), 3);
    EXPECT_EQ(actions.mid(0, 3),
        QStringList({ QString(), QStringLiteral("VireoAddCustomExtInParamAction"),
            QStringLiteral("VireoRemoveCustomExtInParamAction") }));
}

TEST_P(CatalogueTest, changedValuesComeBackFromAFileWithTheSameTextAndBytes)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, GetParam().c_str());
    const QStringList before = description(brick);
    changeEverything(brick);
    linkEveryInput(user, brick);
    if (!row().rows.isEmpty()) {
        EXPECT_NE(description(brick), before);
    }
    DzBrickUserFile file;
    const QByteArray bytes = file.saveText(&user);

    VireoBrickUser loaded;
    Warnings warnings;
    DzBrickUserFile other;
    ASSERT_TRUE(other.loadText(bytes, QStringLiteral("network.sskn"), &loaded))
        << other.getError().toStdString();
    EXPECT_EQ(warnings.messages, QStringList());
    auto* again = qobject_cast<VireoBrickBase*>(loaded.getBrick(brick->getBrickID()));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(description(again), description(brick));
    EXPECT_TEXT(literalText(brick), literalText(again));
    EXPECT_TEXT(placeholderText(brick), placeholderText(again));
    EXPECT_EQ(other.saveText(&loaded), bytes);
}

TEST_P(CatalogueTest, everyInputTakesOutputsOfItsOwnTypeOnly)
{
    const BrickPtr brick = fresh();
    if (row().hasPairs())
        setCount(brick, 2);
    // One brick with an output of every link type, and of every host type.
    const BrickPtr source = makeBrick("VireoMatNullBrick");
    QVector<DzOutParam*> outputs;
    for (int type = 1007; type <= 1016; ++type) {
        auto* output = new VireoExtOutParam;
        output->setLinkType(type);
        outputs.append(output);
    }
    for (int type = 1; type <= 9; ++type) {
        auto* output = new DzOutParam;
        output->setType(type);
        outputs.append(output);
    }
    for (DzOutParam* output : qAsConst(outputs))
        ASSERT_TRUE(source->addParameter(output));
    for (const Row& expected : row().rowsWithPairs(row().hasPairs() ? 2 : 0)) {
        if (expected.isPlain())
            continue;
        DzBrickParam* input = brick->findParameterByName(expected.name);
        ASSERT_NE(input, nullptr) << expected.name.toStdString();
        for (DzOutParam* output : qAsConst(outputs)) {
            const bool allowed = QString::number(output->getType()) == expected.link;
            SCOPED_TRACE(
                expected.name.toStdString() + " from " + std::to_string(output->getType()));
            EXPECT_EQ(input->canConnect(output), allowed);
            EXPECT_EQ(output->canConnect(input), allowed);
            EXPECT_EQ(input->addConnection(output), allowed);
            EXPECT_EQ(input->isConnectedTo(output), allowed);
            input->removeAllConnections();
        }
    }
}
