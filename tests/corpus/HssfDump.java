import java.io.BufferedReader;
import java.io.File;
import java.io.FileNotFoundException;
import java.io.InputStreamReader;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collection;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;
import java.util.concurrent.FutureTask;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.TimeoutException;
import org.apache.poi.hssf.usermodel.*;
import org.apache.poi.poifs.filesystem.POIFSFileSystem;
import org.apache.poi.ss.usermodel.Cell;
import org.apache.poi.ss.usermodel.CellType;
import org.apache.poi.ss.usermodel.Row;

/**
 * Prints what Apache POI reads in workbooks: a line of JSON for each path on standard input. A
 * section that POI cannot read is the text of its exception.
 */
public class HssfDump {
    private static final long SECONDS = 30;

    public static void main(String[] arguments) throws Exception {
        PrintStream out = new PrintStream(System.out, true, "UTF-8");
        System.setErr(new PrintStream(new File(arguments[0])));
        BufferedReader paths =
            new BufferedReader(new InputStreamReader(System.in, StandardCharsets.UTF_8));
        for (String path; (path = paths.readLine()) != null;)
            out.println(json(inTime(path)));
        System.exit(0); // a reader that ran out of time may still be at it
    }

    private static Map<String, Object> inTime(String path) {
        FutureTask<Map<String, Object>> task = new FutureTask<>(() -> workbook(path));
        Thread thread = new Thread(null, task, "reader", 64 << 20);
        thread.setDaemon(true);
        thread.start();
        Map<String, Object> result = new LinkedHashMap<>();
        result.put("path", path);
        try {
            result.putAll(task.get(SECONDS, TimeUnit.SECONDS));
        } catch (TimeoutException failure) {
            result.put("error", "takes longer than " + SECONDS + " s");
        } catch (Exception failure) {
            result.put("error", String.valueOf(failure.getCause()));
        }
        return result;
    }

    private static Map<String, Object> workbook(String path) throws Exception {
        Map<String, Object> result = new LinkedHashMap<>();
        try (POIFSFileSystem files = new POIFSFileSystem(new File(path), true);
             HSSFWorkbook book = new HSSFWorkbook(files)) {
            result.put("formats", formats(book));
            result.put("names", section(() -> names(book)));
            result.put("pictures", section(() -> book.getAllPictures().size()));
            List<Map<String, Object>> sheets = new ArrayList<>();
            for (HSSFSheet sheet : sheetsOf(book))
                sheets.add(cellsOf(sheet));
            // Last, because POI adds records as it reads these.
            for (int index = 0; index < sheets.size(); ++index)
                sheets.get(index).putAll(sheet(book, index));
            result.put("sheets", sheets);
        }
        return result;
    }

    private static Object section(Callable<Object> read) {
        try {
            return read.call();
        } catch (Exception | StackOverflowError failure) {
            return "failed: " + failure;
        }
    }

    private static List<Object> formats(HSSFWorkbook book) {
        List<Object> formats = new ArrayList<>();
        for (int index = 0; index < book.getNumCellStyles(); ++index) {
            HSSFCellStyle style = book.getCellStyleAt(index);
            formats.add(String.valueOf(section(() -> format(book, style))));
        }
        return formats;
    }

    private static Object format(HSSFWorkbook book, HSSFCellStyle style) {
        HSSFFont font = style.getFont(book);
        return Arrays.asList(style.getDataFormatString(), font.getFontName(), font.getFontHeight(),
            font.getBold(), font.getItalic(), font.getColor(), font.getStrikeout(),
            font.getUnderline(), font.getTypeOffset(), style.getFillPattern(),
            style.getFillForegroundColor(), style.getFillBackgroundColor(), style.getBorderLeft(),
            style.getBorderRight(), style.getBorderTop(), style.getBorderBottom(),
            style.getLeftBorderColor(), style.getRightBorderColor(), style.getTopBorderColor(),
            style.getBottomBorderColor(), style.getAlignment(), style.getVerticalAlignment(),
            style.getWrapText(), style.getIndention(), style.getRotation(), style.getLocked(),
            style.getHidden(), style.getShrinkToFit());
    }

    private static Object names(HSSFWorkbook book) {
        List<Object> names = new ArrayList<>();
        for (HSSFName name : book.getAllNames())
            names.add(Arrays.asList(name.getSheetIndex(), name.getNameName(),
                name.isFunctionName() ? "function"
                                      : section(() -> name.getRefersToFormula())));
        return names;
    }

    private static List<HSSFSheet> sheetsOf(HSSFWorkbook book) {
        List<HSSFSheet> sheets = new ArrayList<>();
        for (int index = 0; index < book.getNumberOfSheets(); ++index)
            sheets.add(book.getSheetAt(index));
        return sheets;
    }

    private static Map<String, Object> cellsOf(HSSFSheet sheet) {
        Map<String, Object> result = new LinkedHashMap<>();
        result.put("name", sheet.getSheetName());
        result.put("cells", section(() -> cells(sheet)));
        result.put("rows", section(() -> rows(sheet)));
        result.put("columns", section(() -> columns(sheet)));
        return result;
    }

    private static Map<String, Object> sheet(HSSFWorkbook book, int index) {
        HSSFSheet sheet = book.getSheetAt(index);
        Map<String, Object> result = new LinkedHashMap<>();
        result.put("hidden", String.valueOf(book.getSheetVisibility(index)));
        result.put("merges", section(() -> texts(sheet.getMergedRegions())));
        result.put("shapes", section(() -> shapes(sheet)));
        result.put("charts", section(() -> HSSFChart.getSheetCharts(sheet).length));
        result.put("comments", section(() -> comments(sheet)));
        result.put("conditional formats",
            section(() -> conditionalFormats(sheet.getSheetConditionalFormatting())));
        result.put("validations", section(() -> validations(sheet)));
        result.put("hyperlinks", section(() -> hyperlinks(sheet)));
        result.put("print settings", section(() -> printSettings(book, sheet, index)));
        result.put("view", section(() -> view(sheet)));
        return result;
    }

    private static List<String> texts(Collection<?> values) {
        List<String> texts = new ArrayList<>();
        for (Object value : values)
            texts.add(String.valueOf(value));
        return texts;
    }

    private static Object cells(HSSFSheet sheet) {
        Map<String, Object> cells = new LinkedHashMap<>();
        for (Row row : sheet)
            for (Cell cell : row)
                cells.put((cell.getRowIndex() + 1) + "," + (cell.getColumnIndex() + 1),
                    Arrays.asList(String.valueOf(cell.getCellType()), section(() -> value(cell)),
                        (int)cell.getCellStyle().getIndex()));
        return cells;
    }

    private static Object value(Cell cell) {
        CellType type = cell.getCellType();
        if (type == CellType.NUMERIC)
            return cell.getNumericCellValue();
        if (type == CellType.STRING)
            return cell.getStringCellValue();
        if (type == CellType.BOOLEAN)
            return cell.getBooleanCellValue();
        if (type == CellType.ERROR)
            return (int)cell.getErrorCellValue();
        return type == CellType.FORMULA ? cell.getCellFormula() : null;
    }

    private static Object rows(HSSFSheet sheet) {
        Map<String, Object> rows = new LinkedHashMap<>();
        for (Row row : sheet)
            rows.put(String.valueOf(row.getRowNum() + 1), Arrays.asList((int)row.getHeight(),
                row.getZeroHeight(), row.getOutlineLevel(),
                row.isFormatted() ? (int)row.getRowStyle().getIndex() : -1));
        return rows;
    }

    private static Object columns(HSSFSheet sheet) {
        List<Object> columns = new ArrayList<>();
        for (int column = 0; column < 256; ++column)
            columns.add(Arrays.asList(sheet.getColumnWidth(column), sheet.isColumnHidden(column),
                sheet.getColumnOutlineLevel(column),
                sheet.getColumnStyle(column) == null ? -1
                    : (int)sheet.getColumnStyle(column).getIndex()));
        return columns;
    }

    private static Object shapes(HSSFSheet sheet) {
        List<Object> found = new ArrayList<>();
        HSSFPatriarch patriarch = sheet.getDrawingPatriarch();
        if (patriarch != null)
            addShapes(patriarch, found);
        return found;
    }

    private static void addShapes(HSSFShapeContainer container, List<Object> found) {
        for (HSSFShape shape : container.getChildren()) {
            List<Object> seen = new ArrayList<>();
            seen.add(shape.getClass().getSimpleName());
            seen.add(section(() -> anchor(shape.getAnchor())));
            if (shape instanceof HSSFSimpleShape)
                seen.add(section(() -> ((HSSFSimpleShape)shape).getString().getString()));
            if (shape instanceof HSSFPicture)
                seen.add(section(() -> ((HSSFPicture)shape).getPictureData() == null
                        ? "no picture" : ((HSSFPicture)shape).getPictureData().getData().length));
            if (shape instanceof HSSFObjectData)
                seen.add(section(() -> storageEntries((HSSFObjectData)shape)));
            found.add(seen);
            if (shape instanceof HSSFShapeGroup)
                addShapes((HSSFShapeGroup)shape, found);
        }
    }

    /**
     * How many entries an object's storage has; -1 where it has none. For controls POI looks for a
     * storage too, by the offset of their data in a stream.
     */
    private static int storageEntries(HSSFObjectData object) throws Exception {
        try {
            return object.hasDirectoryEntry() ? object.getDirectory().getEntryCount() : -1;
        } catch (FileNotFoundException failure) {
            return -1;
        }
    }

    private static Object anchor(HSSFAnchor anchor) {
        if (!(anchor instanceof HSSFClientAnchor))
            return anchor == null ? null
                : Arrays.asList(anchor.getDx1(), anchor.getDy1(), anchor.getDx2(), anchor.getDy2());
        HSSFClientAnchor cells = (HSSFClientAnchor)anchor;
        return Arrays.asList((int)cells.getCol1(), cells.getRow1(), (int)cells.getCol2(),
            cells.getRow2(), cells.getDx1(), cells.getDy1(), cells.getDx2(), cells.getDy2());
    }

    private static Object comments(HSSFSheet sheet) {
        Map<String, Object> comments = new LinkedHashMap<>();
        sheet.getCellComments().forEach((where, comment) -> comments.put(where.formatAsString(),
            Arrays.asList(comment.getAuthor(), section(() -> comment.getString().getString()))));
        return comments;
    }

    private static Object conditionalFormats(HSSFSheetConditionalFormatting formatting) {
        List<Object> found = new ArrayList<>();
        for (int index = 0; index < formatting.getNumConditionalFormattings(); ++index) {
            HSSFConditionalFormatting format = formatting.getConditionalFormattingAt(index);
            List<Object> seen = new ArrayList<>(texts(
                Arrays.asList((Object[])format.getFormattingRanges())));
            for (int rule = 0; rule < format.getNumberOfRules(); ++rule) {
                HSSFConditionalFormattingRule one = format.getRule(rule);
                seen.add(String.valueOf(one.getConditionType()));
                seen.add(section(() -> one.getFormula1()));
                seen.add(section(() -> one.getFormula2()));
            }
            found.add(seen);
        }
        return found;
    }

    private static Object validations(HSSFSheet sheet) {
        List<Object> found = new ArrayList<>();
        List<HSSFDataValidation> validations;
        try {
            validations = sheet.getDataValidations();
        } catch (IllegalStateException failure) {
            return found; // there is no table of them, and POI finds no place to make one
        }
        for (HSSFDataValidation validation : validations)
            found.add(Arrays.asList(
                texts(Arrays.asList((Object[])validation.getRegions().getCellRangeAddresses())),
                validation.getValidationConstraint().getValidationType(),
                String.valueOf(validation.getValidationConstraint().getFormula1()),
                String.valueOf(validation.getValidationConstraint().getFormula2())));
        return found;
    }

    private static Object hyperlinks(HSSFSheet sheet) {
        List<Object> found = new ArrayList<>();
        for (HSSFHyperlink link : sheet.getHyperlinkList())
            found.add(Arrays.asList(link.getFirstRow(), link.getFirstColumn(),
                String.valueOf(link.getType()), link.getAddress()));
        return found;
    }

    private static Object printSettings(HSSFWorkbook book, HSSFSheet sheet, int index) {
        HSSFPrintSetup setup = sheet.getPrintSetup();
        return Arrays.asList((int)setup.getPaperSize(), (int)setup.getScale(),
            setup.getLandscape(), (int)setup.getFitWidth(), (int)setup.getFitHeight(),
            setup.getHeaderMargin(), setup.getFooterMargin(), sheet.getMargin((short)0),
            sheet.getMargin((short)1), sheet.getMargin((short)2), sheet.getMargin((short)3),
            sheet.getHeader().getLeft(), sheet.getHeader().getCenter(),
            sheet.getHeader().getRight(), sheet.getFooter().getLeft(),
            sheet.getFooter().getCenter(), sheet.getFooter().getRight(),
            texts(Arrays.asList(Arrays.stream(sheet.getRowBreaks()).boxed().toArray())),
            texts(Arrays.asList(Arrays.stream(sheet.getColumnBreaks()).boxed().toArray())),
            String.valueOf(sheet.getRepeatingRows()), String.valueOf(sheet.getRepeatingColumns()),
            section(() -> sheet.getHorizontallyCenter()), section(() -> sheet.isPrintGridlines()),
            section(() -> sheet.getFitToPage()));
    }

    private static Object view(HSSFSheet sheet) {
        return Arrays.asList(String.valueOf(sheet.getPaneInformation() == null ? null
                : Arrays.asList(sheet.getPaneInformation().getVerticalSplitPosition(),
                    sheet.getPaneInformation().getHorizontalSplitPosition(),
                    sheet.getPaneInformation().isFreezePane())),
            sheet.isDisplayGridlines(), sheet.isRightToLeft(), sheet.getProtect(),
            (int)sheet.getTopRow(), sheet.getDefaultColumnWidth(),
            (int)sheet.getDefaultRowHeight());
    }

    private static String json(Object value) {
        StringBuilder text = new StringBuilder();
        write(value, text);
        return text.toString();
    }

    private static void write(Object value, StringBuilder text) {
        if (value instanceof Map) {
            String separator = "{";
            for (Map.Entry<?, ?> entry : ((Map<?, ?>)value).entrySet()) {
                text.append(separator);
                quote(String.valueOf(entry.getKey()), text);
                text.append(':');
                write(entry.getValue(), text);
                separator = ",";
            }
            text.append(separator.equals("{") ? "{}" : "}");
        } else if (value instanceof Collection) {
            String separator = "[";
            for (Object entry : (Collection<?>)value) {
                text.append(separator);
                write(entry, text);
                separator = ",";
            }
            text.append(separator.equals("[") ? "[]" : "]");
        } else if (value == null || value instanceof Boolean
            || value instanceof Number && Double.isFinite(((Number)value).doubleValue()))
            text.append(value);
        else
            quote(value.toString(), text);
    }

    private static void quote(String value, StringBuilder text) {
        text.append('"');
        for (char unit : value.toCharArray())
            if (unit == '"' || unit == '\\' || unit < ' ' || unit > '~')
                text.append(String.format("\\u%04x", (int)unit));
            else
                text.append(unit);
        text.append('"');
    }
}
