"""The calendar templates that Orrery ships: one module for each workbook."""
